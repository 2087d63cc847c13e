#include "ui/tray/tray1.h"

#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/upload_cycle.h"
#include "texts/texts.h"
#include "ui/settings/remedy.h"
#include "ui/tray/program_icons.h"

Tray1::Tray1(Program& ownProgram, RunFigures& ownFigures, Texts& ownTexts,
             const QStringList& iconFolders)
    : Start(new QAction(&Menu)),
      Pause(new QAction(&Menu)),
      Stop(new QAction(&Menu)),
      Status(new QAction(&Menu)),
      program(ownProgram),
      figures(ownFigures),
      texts(ownTexts),
      folders(iconFolders),
      outages(ownProgram.Wait.OwnClock(), ownProgram.Run),
      restore(new QAction(&Menu)),
      exit(new QAction(&Menu)) {
    Menu.addAction(restore);
    Menu.addAction(Status);
    Menu.addSeparator();
    Menu.addActions({Start, Pause, Stop});
    Menu.addSeparator();
    Menu.addAction(exit);
    Menu.setDefaultAction(restore);
    icon.setContextMenu(&Menu);
    Connect();
    ShowTexts();
}

void Tray1::Connect() {
    connect(Start, &QAction::triggered, &program, &Program::Start);
    connect(Pause, &QAction::triggered, &program.Cycle, &UploadCycle::Pause);
    connect(Stop, &QAction::triggered, &program.Cycle, &UploadCycle::Stop);
    connect(exit, &QAction::triggered, &program, &Program::Leave);
    connect(restore, &QAction::triggered, this, &Tray1::RestoreWanted);
    connect(Status, &QAction::triggered, this, [this] { emit StatusWanted(!statusShown); });
    connect(&icon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason why) {
                if (why == QSystemTrayIcon::Trigger || why == QSystemTrayIcon::DoubleClick)
                    emit RestoreWanted();
            });
    connect(&icon, &QSystemTrayIcon::messageClicked, this, &Tray1::RestoreWanted);
    connect(&icon, &QSystemTrayIcon::messageClicked, this, &Tray1::RemedyWanted);
    connect(&outages, &OutageWatch::Began, this, [this] {
        const auto& trouble = program.Run.Ongoing();
        const auto remedy = Remedy::For(trouble, texts);
        Tell(texts.Get("Tray", "Failing").arg(remedy ? remedy->Trouble : trouble->Why),
             QSystemTrayIcon::Warning);
    });
    connect(&outages, &OutageWatch::Ended, this,
            [this] { Tell(texts.Get("Tray", "WorksAgain"), QSystemTrayIcon::Information); });
    connect(&figures, &RunFigures::Changed, this, &Tray1::ShowState);
    connect(&texts, &Texts::Changed, this, &Tray1::ShowTexts);
    connect(&program, &Program::SettingsLoaded, this, &Tray1::ShowState);
}

void Tray1::SetStatusShown(bool shown) {
    statusShown = shown;
    ShowTexts();
}

void Tray1::ShowTexts() {
    const auto text = [this](const QString& key) { return texts.Get("Tray", key); };
    restore->setText(text("Restore"));
    Start->setText(text("Start"));
    Stop->setText(text("Stop"));
    Status->setText(statusShown ? text("HideStatus") : text("ShowStatus"));
    exit->setText(text("Exit"));
    ShowState();
}

void Tray1::Tell(const QString& text, QSystemTrayIcon::MessageIcon kind) {
    if (!program.State.Values.Notify) return;
    message = text;
    icon.showMessage(program.Title(), text, kind);
}

void Tray1::ShowState() {
    const TrayState state{figures.State(), figures.Published(), figures.Online};
    Pause->setText(texts.Get("Tray", state.Is == RunState::Paused ? QString("Continue") : "Pause"));
    const RunButtons buttons = RunButtons::For(program.Run);
    Start->setEnabled(buttons.Start);
    Pause->setEnabled(buttons.Pause);
    Stop->setEnabled(buttons.Stop);
    const QString camera = program.Name();
    icon.setToolTip((camera.isEmpty() ? camera : camera + " - ") + TrayTooltip(texts, state));
    const QString name = TrayIconName(state);
    if (name == shownIcon) return;
    shownIcon = name;
    const QIcon found = ProgramIcon(folders, "tray-" + name);
    icon.setIcon(found.isNull() ? PlainTrayIcon(name) : found);
}
