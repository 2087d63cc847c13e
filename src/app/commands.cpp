#include "app/commands.h"

#include "app/console.h"
#include "app/console_boxes.h"
#include "app/film_command.h"
#include "app/second_start.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "core/command_line.h"
#include "core/commands/check.h"
#include "core/commands/list_cameras.h"
#include "core/commands/once.h"
#include "core/commands/put_page.h"
#include "core/commands/report.h"
#include "core/console_display.h"
#include "core/folder_claim.h"
#include "core/log/run_log.h"
#include "core/program.h"
#include "core/program_folder.h"
#include "net/page_control.h"
#include "platform/platform.h"
#include "platform/system_clock.h"
#include "platform/termination.h"

#include <QCoreApplication>

namespace {

CommandStatus PublishOnce(const CommandLine& commandLine, const ProgramFolder& folder,
                          Termination& termination) {
    FolderClaim claim(folder.Folder);
    if (!claim.Take()) {
        PrintError(FolderInUseText(claim, folder.Folder, "Once"));
        return CommandStatus::Warnings;
    }
    SystemClock clock;
    const Platform platform = MakePlatform();
    PageControl page;
    ConsoleBoxes boxes(PrintError);
    Program program({clock, platform, boxes, page, folder.Folder, {}, folder.ReadingFolders()});
    ConsoleDisplay verbose(clock, PrintError);
    if (commandLine.Verbose) program.Display.Add(verbose);
    RunLog log({clock, program.Run, program.State, folder.Folder});
    Once once(program, PrintLine);
    QObject::connect(&termination, &Termination::Requested, &program, &Program::Exit);
    QObject::connect(&program, &Program::Ended, qApp, [] { QCoreApplication::exit(0); });
    QMetaObject::invokeMethod(&once, &Once::Begin, Qt::QueuedConnection);
    QCoreApplication::exec();
    program.CleanUp();
    return once.Status();
}

int FilmOf(const FilmRange& range, const ProgramFolder& folder, Termination& termination) {
    bool ended = false;
    const auto end = [&ended] { ended = true; };
    QObject::connect(&termination, &Termination::Requested, &termination, end);
    QObject::connect(&termination, &Termination::StopRequested, &termination, end);
    return MakeFilmOf(range, folder, [&ended] {
        QCoreApplication::processEvents();
        return ended;
    });
}

// For a moment: nothing here is changed, and a program that is started meanwhile shall start.
bool InUse(const QString& folder) {
    FolderClaim claim(folder);
    return !claim.Take();
}

}  // namespace

int RunCommand(const CommandLine& commandLine, const ProgramFolder& folder,
               Termination& termination) {
    using Task = CommandLine::Task;
    if (commandLine.Asked == Task::Once)
        return static_cast<int>(PublishOnce(commandLine, folder, termination));
    if (commandLine.Film) return FilmOf(*commandLine.Film, folder, termination);
    SystemClock clock;
    Waiting wait(clock);
    QObject::connect(&termination, &Termination::Requested, &wait, &Waiting::Close);
    const Platform platform = MakePlatform();
    const CommandSurroundings around{wait, platform, folder.Folder, PrintLine};
    if (commandLine.Asked == Task::WebPage)
        return static_cast<int>(PutPage(around, folder.ReadingFolders()));
    if (commandLine.Asked == Task::Report) return static_cast<int>(Report(around));
    return static_cast<int>(commandLine.Asked == Task::Check ? Check(around, InUse(folder.Folder))
                                                             : ListCameras(around));
}
