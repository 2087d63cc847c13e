#pragma once

#include "ui/shell.h"
#include "ui/window_fixture.h"

// The program with all its windows.
class ShellFixture : public WindowFixture {
  public:
    ShellFixture();
    ~ShellFixture();

    QList<QUrl> Opened;  // pages and files that the system was asked for
    bool SystemOpens = true;
    std::unique_ptr<Shell> Windows;

    // Starts the program anew.
    void Begin();
    // Opens the menu with the keyboard.
    frmMenue& OpenMenu();
};
