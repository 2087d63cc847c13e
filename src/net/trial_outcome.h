#pragma once

#include <QMetaType>
#include <QString>

// What is to be tried: a server, or a folder of this computer.
struct TrialAccess {
    QString Server = {};
    int Port = 21;
    QString User = {};
    QString Password = {};
    QString Folder = {};       // on the server, empty for the one it starts in; local: a full path
    bool DeleteFirst = false;  // the old picture is deleted before the new one gets its name
    bool Local = false;
    bool DataFromAnywhere = false;  // see FTP
};

enum class TrialStep { Connecting, ChangingFolder, Storing, Renaming, Deleting };

enum class TrialResult {
    Fine,
    Cancelled,
    TooSlow,  // not done within a minute
    HostNotFound,
    Refused,           // nobody listens at that port
    Unreachable,       // the network does not lead there
    NoAnswer,          // a firewall, or a server that takes too long
    NotFtp,            // whoever listens there does not greet as FTP servers do
    ServerRefused,     // it greets with a refusal, or refuses what every server can do
    EncryptionNeeded,  // no login without encryption
    LoginRefused,
    FolderMissing,
    DataBlocked,        // no connection from the server back to this computer
    DataFromElsewhere,  // it came from another address than the server's
    MayNotStore,
    NoRoom,
    RenameRefused,
    ReplaceRefused,  // renamed, but not over a file that is there
    DeleteRefused,
    ConnectionLost,
    LocalFolderMissing,
    LocalNotWritable,
    NoScratchFile,  // the file to be sent cannot be written
};

struct TrialOutcome {
    TrialResult Is = TrialResult::Fine;
    QString Reply = {};       // the server's own words on it, or that address; may be empty
    QString LeftBehind = {};  // the name of a test file that could not be deleted; empty: none
};

Q_DECLARE_METATYPE(TrialOutcome)
