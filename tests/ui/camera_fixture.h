#pragma once

#include "ui/settings/camera/frm_cam.h"
#include "ui/settings_fixture.h"
#include "ui/texts/languages.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

// The camera settings of a program with two cameras of other makes plugged in.
class CameraFixture : public SettingsFixture {
  public:
    CameraFixture() {
        for (const char* name : {"Left", "Right"})
            System.Cameras.Devices << CaptureDevice{.Name = QString::fromLatin1(name),
                                                    .Connection = QString::fromLatin1(name),
                                                    .Input = "none",
                                                    .Address = QString::fromLatin1(name)};
        Tables.SetFields([this] { return MessageFields{{}, Window.PathText()}; });
        Write("");
    }

    Languages Tables{*Core, Words};
    frmCam Window{Around(), Tables, nullptr};
    // Opens the window of a settings file.
    void OpenWith(const QString& lines) {
        Write(lines);
        Core->RefreshDrivers();
        Core->LoadSettings();
        Window.Open();
    }
    // Picks an entry as a user does.
    static void Pick(QComboBox& list, int index) {
        list.setCurrentIndex(index);
        emit list.activated(index);
        QCoreApplication::processEvents();
    }
};
