#pragma once

#include "ui/menu/opener.h"
#include "ui/shell.h"
#include "ui/skin/picture_button.h"
#include "ui/window_fixture.h"

#include <QTest>

class RecordingOpener : public Opener {
  public:
    QList<QUrl> Opened;
    bool Works = true;

    bool Open(const QUrl& address) override {
        Opened << address;
        return Works;
    }
};

// The program with all its windows.
class ShellFixture : public WindowFixture {
  public:
    ShellFixture() = default;
    ~ShellFixture() { Windows.reset(); }

    RecordingOpener Pages;
    std::unique_ptr<Shell> Windows;

    // Starts the program anew.
    void Begin() {
        Windows.reset();
        Core = std::make_unique<Program>(
            Program::Surroundings{Time, System.Services, Boxes, Page, Folder.path(), {}});
        Windows = std::make_unique<Shell>(*Core, QStringList{Folder.path()}, Boxes, Pages);
        QObject::connect(Core.get(), &Program::Loaded, Windows.get(), &Shell::Show);
        Core->Load(false);
    }

    // Opens the menu with the keyboard.
    frmMenue& OpenMenu() {
        Windows->MainWindow.activateWindow();
        (void)QTest::qWaitForWindowActive(&Windows->MainWindow);
        QTest::keyClick(Windows->MainWindow.btnOptions, Qt::Key_Return);
        (void)QTest::qWaitForWindowActive(&Windows->Menu);
        return Windows->Menu;
    }
};
