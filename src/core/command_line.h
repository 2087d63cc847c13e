#pragma once

#include "core/film_range.h"

#include <QString>
#include <QStringList>

// What the program was started with.
struct CommandLine {
    QString Folder;        // --folder; empty: none
    bool Verbose = false;  // --verbose
    // What is done in place of publishing with windows.
    enum class Task { None, Check, Once, ListCameras, Film, Report, WebPage };
    // --check, --once, --list-cameras, --film, --report, --web-page
    Task Asked = Task::None;
    std::optional<FilmRange> Film;  // whenever that is asked
    bool Help = false;              // --help
    bool Version = false;           // --version
    bool Autostarter = false;       // exactly "/autostarter" besides --folder and --verbose
    QString Fault;                  // what is wrong with it, a sentence; empty: nothing

    // arguments: without the program's own name. Words that are no options are left alone, but with
    // any of them the rest is not exactly "/autostarter".
    [[nodiscard]] static CommandLine Parse(const QStringList& arguments);

    // What --help and --version print, with a line end.
    [[nodiscard]] static QString HelpText();
    [[nodiscard]] static QString VersionText();
};
