#include "app/console_boxes.h"
#include "app/console_troubles.h"
#include "base/status_hub.h"
#include "core/command_line.h"
#include "core/console_display.h"
#include "core/program.h"
#include "core/program_folder.h"
#include "core/upload_cycle.h"
#include "core/version.h"
#include "net/page_control.h"
#include "net/sftp/password_teller.h"
#include "platform/address_opener.h"
#include "platform/platform.h"
#include "platform/program_start.h"
#include "platform/system_clock.h"
#include "platform/termination.h"
#include "ui/main/splash.h"
#include "ui/shell.h"
#include "ui/widgets/outline_style.h"
#include "ui/window_boxes.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

void PrintError(const QString& line) {
    std::fprintf(stderr, "%s\n", qPrintable(line));
    std::fflush(stderr);
}

bool HasDisplay() {
    return QGuiApplication::platformName() != "offscreen" &&
           QGuiApplication::platformName() != "minimal";
}

// Ties the ways in which the system ends a program to the one orderly way out.
void ConnectEnd(Program& program, Termination& termination) {
    QObject::connect(&termination, &Termination::Requested, &program, &Program::Exit);
    QObject::connect(&termination, &Termination::StopRequested, &program,
                     [&program] { program.Cycle.Stop(); });
    // Not quit(): that asks the window first, and the window leaves its closing to the program.
    QObject::connect(&program, &Program::Ended, qApp, [] { QCoreApplication::exit(0); });
}

int Run(const CommandLine& commandLine, const ProgramFolder& folder, Termination& termination) {
    SystemClock clock;
    const Platform platform = MakePlatform();
    PageControl page;
    WindowBoxes windows(commandLine.Autostarter);
    ConsoleBoxes console(PrintError);
    const bool display = HasDisplay();
    MessageBoxes& boxes =
        display ? static_cast<MessageBoxes&>(windows) : static_cast<MessageBoxes&>(console);
    Program program({clock, platform, boxes, page, folder.Folder, folder.FindShared("Click.wav"),
                     folder.ReadingFolders()});
    windows.SetWaiting(program.Wait);

    ConsoleDisplay verbose(clock, PrintError);
    ConsoleTroubles troubles(PrintError);
    if (commandLine.Verbose)
        program.Display.Add(verbose);
    else if (!display)
        program.Display.Add(troubles);
    ConnectEnd(program, termination);
    Shell shell(program, folder.ReadingFolders(), boxes, &AddressOpener::Open);
    // Where nobody can see it, the windows and what their skin lacks are no concern.
    if (display) QObject::connect(&program, &Program::Loaded, &shell, &Shell::Show);
    // Nobody is there to be guided after an automatic start.
    if (display && !commandLine.Autostarter)
        QObject::connect(&program, &Program::Loaded, &shell, &Shell::OfferGuide);
    if (display && !commandLine.Autostarter) shell.StartPicture.Show();
    // From inside the event loop, because an automatic start waits in it.
    QMetaObject::invokeMethod(
        &program, [&] { program.Load(commandLine.Autostarter); }, Qt::QueuedConnection);
    const int status = QCoreApplication::exec();
    program.CleanUp();
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    // Started by OpenSSH for one question: no window, no display, no folder.
    if (PasswordHelper::Wanted()) return PasswordHelper::Run(argc, argv);
    // Before there is an application, which needs a display that a mere question does not.
    const CommandLine commandLine = CommandLine::Parse(ProgramStart::Arguments(argc, argv));
    if (commandLine.Help || commandLine.Version || commandLine.Verbose ||
        !commandLine.Fault.isEmpty())
        ProgramStart::UseConsole();
    if (commandLine.Help || commandLine.Version) {
        const QString text =
            commandLine.Help ? CommandLine::HelpText() : CommandLine::VersionText();
        std::fputs(qPrintable(text), stdout);
        return 0;
    }
    if (!commandLine.Fault.isEmpty()) {
        PrintError(commandLine.Fault);
        return 2;
    }
    ProgramStart::FindFonts();
    const QApplication application(argc, argv);
    QApplication::setApplicationName("stillpost");
    QApplication::setApplicationVersion(ProgramVersion());
    QApplication::setQuitOnLastWindowClosed(false);
    OutlineStyle::Install();
    const auto folder =
        ProgramFolder::Choose(ProgramFolder::Places::OfThisProcess(commandLine.Folder));
    if (!folder) {
        ProgramStart::UseConsole();
        PrintError("The program folder cannot be created: " + commandLine.Folder);
        return 1;
    }
    // Never taken away: a system that waits with killing the program waits until it has ended.
    const auto termination = Termination::Create();
    const int status = Run(commandLine, *folder, *termination);
    std::fflush(nullptr);
    // A name lookup may still hang in the system's resolver; the end must not wait for it.
    std::_Exit(status);
}
