#pragma once

#include "ui/settings/overlay/frm_bild.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/settings/overlay/frm_text.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings_fixture.h"

#include <QDir>

// The three windows of the overlays over a settings file that says no more than the size of the
// camera's pictures, 320 x 240; there is no camera.
class OverlayBench : public SettingsFixture {
  public:
    static inline const QString Empty = "[Einstellungen]\nCaptureFormat=320x240\n";

    explicit OverlayBench(const QString& settings = Empty) {
        QDir(Folder.path()).mkdir("overlay");
        Write(settings);
        Core->LoadSettings();
    }

    frmText Lines8{Around(), nullptr};
    frmBild Pictures{Around(), nullptr};
    frmOverlay Window{Around(), Lines8, Pictures, nullptr};

    // A picture in a folder of the program folder; its upper left pixel is white, the rest is not.
    QString MakePicture(const QString& name, const QColor& colour, QSize size = {40, 30}) const {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(colour);
        picture.setPixelColor(0, 0, Qt::white);
        const QString path = Folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        picture.save(path);
        return path;
    }

    // What is seen after that time.
    [[nodiscard]] QImage Seen(const OverlayPreview& preview, int milliseconds = 60) {
        Time.Advance(milliseconds);
        return preview.Picture();
    }

    // The lines of the file after the window was saved over an empty one.
    [[nodiscard]] QStringList Saved(SettingsWindow& window) {
        Write("");
        return window.Save() ? Lines() : QStringList("not saved");
    }
};

[[nodiscard]] inline bool IsRed(const QColor& colour) {
    return colour.red() > 180 && colour.green() < 70 && colour.blue() < 70;
}
