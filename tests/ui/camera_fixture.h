#pragma once

#include "ui/settings/camera/frm_cam.h"
#include "ui/settings_fixture.h"
#include "ui/texts/languages.h"

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

    // What can be reached with Tab from this widget on, in order, up to the button that closes.
    [[nodiscard]] static QList<QWidget*> TabChain(SettingsWindow& window, QWidget* first) {
        window.activateWindow();
        (void)QTest::qWaitForWindowActive(&window);
        first->setFocus();
        QList<QWidget*> chain;
        while (chain.size() < 40 && window.focusWidget() != window.btnClose) {
            chain << window.focusWidget();
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        }
        return chain << window.focusWidget();
    }

    // Controls that a reader of the screen could not name.
    [[nodiscard]] static QStringList Nameless(const QWidget& window) {
        QStringList nameless;
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            const bool control = widget->focusPolicy() & Qt::TabFocus &&
                                 widget->isVisibleTo(&window) && !widget->focusProxy();
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            if (control && widget->accessibleName().isEmpty() &&
                !(button && button->text().size() > 1) && !widget->inherits("QScrollArea"))
                nameless << QString::fromLatin1(widget->metaObject()->className());
        }
        return nameless;
    }
};
