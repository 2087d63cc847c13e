#pragma once

#include <QString>

// What kind of thing keeps pictures from being published, as far as the operator can do something
// about it. Where that is done, ui/settings/remedy.cpp says.
enum class TroubleKind {
    Other,        // nothing to be set helps, or nobody knows what
    Camera,       // it is not there, or gives no picture
    Line,         // this computer is offline
    Server,       // it is not found or does not answer
    Identity,     // it does not prove who it is, or offers no encryption
    Login,        // it does not take user name and password
    Folder,       // it does not have the folder
    Transfer,     // a step of the upload was refused or broke off
    LocalFolder,  // of the local mode: none, or it cannot be written
    WorkFolder,   // it cannot be written; its disk is full, perhaps
};

struct Trouble {
    QString Why = {};  // in words for people; empty for the ordinary course
    TroubleKind Kind = TroubleKind::Other;

    [[nodiscard]] bool operator==(const Trouble&) const = default;
};
