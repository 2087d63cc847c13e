#pragma once

#include <QStringList>

#include <optional>

// Where the program's files are: the program folder, which it writes to, and the installed copies
// of what it only reads.
struct ProgramFolder {
    // Full paths.
    QString Folder;
    QString ExecutableFolder;

    // The places to choose from; tests put their own in.
    struct Places {
        QString Requested;         // from the command line; may be relative; empty: none
        QString ExecutableFolder;  // where the running program lies
        QString UserFolder;        // the user's own data folder of this program

        // Those of this process; the application is there and has its name.
        [[nodiscard]] static Places OfThisProcess(const QString& requested);
    };

    // The requested folder, else the executable's own when files can be created in it, else the
    // user's. The folder is created when missing; nothing when that fails.
    [[nodiscard]] static std::optional<ProgramFolder> Choose(const Places& places);

    // The folder that is chosen when none is requested; it may be missing yet.
    [[nodiscard]] static QString Usual(const Places& places);

    // The arguments with which the system starts the program by itself, so that it finds this
    // program folder.
    [[nodiscard]] static QStringList AutostartArguments(const QString& folder,
                                                        const Places& places);

    // The places of files that are only read: the program folder, the executable's, the installed
    // share folder.
    [[nodiscard]] QStringList ReadingFolders() const;

    // The full path of a file or folder ("Click.wav", "Skins/Default"), matched without regard to
    // case: in the first of the reading folders that has it. Empty when there is none.
    [[nodiscard]] QString FindShared(const QString& name) const;
};
