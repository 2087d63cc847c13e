#include "core/command_line.h"

#include "core/version.h"

#include <optional>

namespace {

constexpr QStringView folderOption = u"--folder";
constexpr QStringView folderWithValue = u"--folder=";

std::optional<CommandLine::Task> TaskOf(const QString& option) {
    if (option == u"--check") return CommandLine::Task::Check;
    if (option == u"--once") return CommandLine::Task::Once;
    if (option == u"--list-cameras") return CommandLine::Task::ListCameras;
    if (option == u"--film") return CommandLine::Task::Film;
    if (option == u"--web-page") return CommandLine::Task::WebPage;
    if (option == u"--report") return CommandLine::Task::Report;
    return std::nullopt;
}

}  // namespace

CommandLine CommandLine::Parse(const QStringList& arguments) {
    CommandLine result;
    QStringList rest;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& each = arguments[i];
        const bool joined = each.startsWith(folderWithValue);
        if (joined || each == folderOption) {
            if (!result.Folder.isEmpty()) result.Fault = "--folder is given twice.";
            // An option behind it means that the folder was forgotten.
            const QString next =
                joined ? each.sliced(folderWithValue.size()) : arguments.value(++i);
            const bool option = !joined && next.startsWith(u'-');
            if (next.isEmpty() || option || next == "/autostarter")
                result.Fault = "--folder needs a folder behind it.";
            result.Folder = next;
        } else if (const auto task = TaskOf(each)) {
            if (result.Asked != Task::None) result.Fault = "Only one thing can be done at a time.";
            result.Asked = *task;
            if (*task == Task::Film) {
                result.Film = FilmRange::Parse(arguments.value(i + 1), arguments.value(i + 2),
                                               arguments.value(i + 3));
                if (!result.Film)
                    result.Fault =
                        "--film needs two times behind it, such as 2026-11-22 or 2026-11-22T06:30, "
                        "the first before the second, and a file.";
                i += 3;
            }
        } else if (each == "--verbose") {
            result.Verbose = true;
        } else if (each == "--help" || each == "-h") {
            result.Help = true;
        } else if (each == "--version") {
            result.Version = true;
        } else if (each.startsWith(u'-')) {
            result.Fault = QStringLiteral("There is no option %1.").arg(each);
        } else {
            rest << each;
        }
    }
    result.Autostarter = rest == QStringList("/autostarter");
    return result;
}

QString CommandLine::HelpText() {
    return QStringLiteral(
        "Usage: stillpost [--folder DIR] [--verbose] [/autostarter]\n"
        "       stillpost [--folder DIR] --check | --once | --list-cameras | --report | "
        "--web-page\n"
        "       stillpost [--folder DIR] --film FROM TO FILE\n"
        "\n"
        "Publishes a still picture from a camera on a web site.\n"
        "\n"
        "  --folder DIR   use this program folder: the settings file ftpOptions.ini, the skins,\n"
        "                 the overlay and offline pictures are there\n"
        "  --verbose      print every status text, command and reply on standard error\n"
        "  /autostarter   start publishing at once when the settings allow it (Autostart=1)\n"
        "  --check        say what is wrong in the settings, try camera and server, and end;\n"
        "                 exit status 0: all is well, 1: warnings, 2: nothing can be published\n"
        "  --once         publish one picture and end; exit status 0: it is public, 1: another\n"
        "                 Stillpost works with the folder, 2: it could not be published\n"
        "  --list-cameras print the cameras with the picture formats that they offer\n"
        "  --film ...     make a film of the archive's pictures between two times (2026-11-22 or\n"
        "                 2026-11-22T06:30; a day as TO: to its end), WebM where FILE ends so, "
        "else\n"
        "                 MP4; exit status 0, or 1 where there is none\n"
        "  --web-page     put the web page beside the pictures; exit status 0: it is there, 1: "
        "another\n"
        "                 file has its name and was left alone, 2: it could not be put there\n"
        "  --report       print what somebody has to know who shall help: system, cameras, "
        "settings\n"
        "                 and log, without passwords\n"
        "  --help         print this text\n"
        "  --version      print the program's version\n");
}

QString CommandLine::VersionText() {
    return "stillpost " + ProgramVersion() + "\n";
}
