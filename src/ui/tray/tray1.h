#pragma once

#include "core/outage_watch.h"
#include "ui/tray/tray_state.h"

#include <QMenu>
#include <QStringList>
#include <QSystemTrayIcon>

class Program;
class RunFigures;
class Texts;

// The icon in the tray of the desktop: shows the state, brings the main window back at a click, has
// a small menu, and tells by a message when publishing fails for long and works again. Where the
// desktop has no tray it does nothing.
class Tray1 : public QObject {
    Q_OBJECT

  public:
    // Program, figures and texts outlive the icon. folders: that may hold the icon files.
    Tray1(Program& ownProgram, RunFigures& ownFigures, Texts& ownTexts,
          const QStringList& iconFolders);

    void Show() { icon.show(); }
    // Which of its two texts the entry for the status window has.
    void SetStatusShown(bool shown);

    [[nodiscard]] QString ToolTip() const { return icon.toolTip(); }
    // The last message; empty before the first one.
    [[nodiscard]] const QString& Message() const { return message; }

    QMenu Menu;
    QAction* Start;
    QAction* Pause;
    QAction* Stop;
    QAction* Status;

  signals:
    // The main window is to come back.
    void RestoreWanted();
    // What a message has told of is to be put right.
    void RemedyWanted();
    // The status window is to be shown, or hidden.
    void StatusWanted(bool shown);

  private:
    void Connect();
    void ShowTexts();
    void ShowState();
    void Tell(const QString& text, QSystemTrayIcon::MessageIcon kind);

    Program& program;
    RunFigures& figures;
    Texts& texts;
    QStringList folders;
    QSystemTrayIcon icon;
    OutageWatch outages;
    QAction* restore;
    QAction* exit;
    QString shownIcon;
    QString message;
    bool statusShown = false;
};
