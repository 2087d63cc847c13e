#include "app/commands.h"
#include "app/console.h"
#include "app/console_boxes.h"
#include "app/console_troubles.h"
#include "app/second_start.h"
#include "base/status_hub.h"
#include "core/command_line.h"
#include "core/console_display.h"
#include "core/folder_claim.h"
#include "core/log/run_log.h"
#include "core/program.h"
#include "core/program_folder.h"
#include "core/service_reports.h"
#include "core/upload_cycle.h"
#include "core/version.h"
#include "net/page_control.h"
#include "net/sftp/password_teller.h"
#include "platform/address_opener.h"
#include "platform/platform.h"
#include "platform/program_start.h"
#include "platform/service_manager.h"
#include "platform/system_clock.h"
#include "platform/termination.h"
#include "ui/main/splash.h"
#include "ui/shell.h"
#include "ui/widgets/outline_style.h"
#include "ui/window_boxes.h"

#include <QApplication>
#include <QDir>
#include <QProcess>

#include <cstdlib>
#include <memory>

namespace {

bool HasDisplay() {
    return QGuiApplication::platformName() != "offscreen" &&
           QGuiApplication::platformName() != "minimal";
}

// Before there is an application. What works without windows has no use for a screen, unless it
// tells of it.
void ChooseScreen(const CommandLine& commandLine) {
    constexpr const char* variable = "QT_QPA_PLATFORM";
    const bool task = commandLine.Asked != CommandLine::Task::None;
    const bool none = !ProgramStart::HasScreen() && !qEnvironmentVariableIsSet(variable);
    const bool tells = commandLine.Asked == CommandLine::Task::Report;
    if (tells && !none && !qEnvironmentVariableIsSet(variable))
        qputenv(variable, ProgramStart::ScreenOrNone());
    else if (task || none)
        qputenv(variable, "offscreen");
    ProgramStart::FindFonts();
}

std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv, bool windows) {
    if (!windows) return std::make_unique<QGuiApplication>(argc, argv);
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    OutlineStyle::Install();
    return application;
}

// Of one among several: any folder but the usual one.
QString NameFor(const ProgramFolder& folder) {
    const QDir own(folder.Folder);
    const QDir usual(ProgramFolder::Usual(ProgramFolder::Places::OfThisProcess({})));
    return own == usual ? QString() : own.dirName();
}

// Another one, which goes on when this one ends.
void StartProgram(const QString& folder) {
    const QString program = QCoreApplication::applicationFilePath();
    if (!QProcess::startDetached(program, {"--folder", folder}))
        PrintError("Cannot start " + program);
}

// Ties the ways in which the system ends a program to the one orderly way out; ended is true from
// then on, because a window that is shown handles events before there is a loop to be left.
void ConnectEnd(Program& program, Termination& termination, bool& ended) {
    QObject::connect(&termination, &Termination::Requested, &program, &Program::Exit);
    QObject::connect(&termination, &Termination::StopRequested, &program,
                     [&program] { program.Cycle.Stop(); });
    // Not quit(): that asks the window first, and the window leaves its closing to the program.
    QObject::connect(&program, &Program::Ended, qApp, [&ended] {
        ended = true;
        QCoreApplication::exit(0);
    });
}

int Run(const CommandLine& commandLine, const ProgramFolder& folder, Termination& termination) {
    const bool display = HasDisplay();
    SystemClock clock;
    FolderClaim claim(folder.Folder);
    if (const auto status = EndSecondStart(claim, folder.Folder, display, termination))
        return *status;
    claim.Listen(clock, display);
    const Platform platform = MakePlatform();
    PageControl page;
    WindowBoxes windows(commandLine.Autostarter);
    ConsoleBoxes console(PrintError);
    MessageBoxes& boxes =
        display ? static_cast<MessageBoxes&>(windows) : static_cast<MessageBoxes&>(console);
    Program program({clock, platform, boxes, page, folder.Folder, folder.FindShared("Click.wav"),
                     folder.ReadingFolders(), NameFor(folder)});
    windows.SetWaiting(program.Wait);

    ConsoleDisplay verbose(clock, PrintError);
    ConsoleTroubles troubles(PrintError);
    const ServiceManager manager = ServiceManager::OfThisProcess();
    ServiceReports reports(clock, program.Run, manager);
    const auto journal = manager.KeepsJournal() ? PrintError : nullptr;
    RunLog log({clock, program.Run, program.State, folder.Folder, journal});
    if (commandLine.Verbose)
        program.Display.Add(verbose);
    else if (!display && !journal)
        program.Display.Add(troubles);
    QObject::connect(&program, &Program::Loaded, &log, [&] {
        log.Write(program.Title() + " " + ProgramVersion() + " begins, process " +
                  QString::number(QCoreApplication::applicationPid()));
        if (const QString remark = program.SettingsRemark(); !remark.isEmpty()) log.Write(remark);
    });
    bool ended = false;
    ConnectEnd(program, termination, ended);
    Shell shell(program, folder.ReadingFolders(), boxes, &AddressOpener::Open);
    // Where nobody can see it, the windows and what their skin lacks are no concern.
    if (display) QObject::connect(&program, &Program::Loaded, &shell, &Shell::Show);
    // Nobody is there to be guided after an automatic start.
    if (display && !commandLine.Autostarter)
        QObject::connect(&program, &Program::Loaded, &shell, &Shell::OfferGuide);
    QObject::connect(&shell, &Shell::ProgramWanted, &StartProgram);
    if (display && !commandLine.Autostarter) shell.StartPicture.Show();
    if (display) QObject::connect(&claim, &FolderClaim::ShowWanted, &shell, &Shell::ComeToFront);
    // From inside the event loop, because an automatic start waits in it.
    QMetaObject::invokeMethod(
        &program,
        [&] {
            program.Load(commandLine.Autostarter);
            reports.Loaded();
        },
        Qt::QueuedConnection);
    const int status = ended ? 0 : QCoreApplication::exec();
    log.Write(program.Title() + " ends");
    program.CleanUp();
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    ProgramStart::ShareOneHeap();
    // Started by OpenSSH for one question: no window, no display, no folder.
    if (PasswordHelper::Wanted()) return PasswordHelper::Run(argc, argv);
    // Before there is an application, which needs a display that a mere question does not.
    const CommandLine commandLine = CommandLine::Parse(ProgramStart::Arguments(argc, argv));
    const bool task = commandLine.Asked != CommandLine::Task::None;
    if (commandLine.Help || commandLine.Version || commandLine.Verbose || task ||
        !commandLine.Fault.isEmpty())
        ProgramStart::UseConsole();
    if (commandLine.Help || commandLine.Version) {
        Print(commandLine.Help ? CommandLine::HelpText() : CommandLine::VersionText());
        return 0;
    }
    if (!commandLine.Fault.isEmpty()) {
        PrintError(commandLine.Fault);
        return 2;
    }
    ChooseScreen(commandLine);
    const auto application = MakeApplication(argc, argv, !task);
    QCoreApplication::setApplicationName("stillpost");
    QCoreApplication::setApplicationVersion(ProgramVersion());
    const auto folder =
        ProgramFolder::Choose(ProgramFolder::Places::OfThisProcess(commandLine.Folder));
    if (!folder) {
        ProgramStart::UseConsole();
        PrintError("The program folder cannot be created: " + commandLine.Folder);
        return 1;
    }
    // Never taken away: a system that waits with killing the program waits until it has ended.
    const auto termination = Termination::Create();
    const int status = task ? RunCommand(commandLine, *folder, *termination)
                            : Run(commandLine, *folder, *termination);
    std::fflush(nullptr);
    // A name lookup may still hang in the system's resolver; the end must not wait for it.
    std::_Exit(status);
}
