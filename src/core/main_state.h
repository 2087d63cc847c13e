#pragma once

#include "core/settings/load_settings.h"

#include <QString>

#include <optional>

// What visitors of the web page see, as far as the program knows.
struct PublishedPicture {
    QString File;   // one that shows it; full path
    qint64 At = 0;  // clock milliseconds
};

// What the whole core shares: the settings in force and a few facts about the run.
struct MainState {
    bool DriverPresent = false;    // at least one capture device was found
    QString SkinName = "Default";  // the skin in use; "Default" when the chosen one is missing
    bool MenuOpen = false;         // the options menu is shown
    bool StatusShown = false;      // the status window is shown; nothing updates it otherwise
    QString SettingsFile;          // full path
    Settings Values;               // as LoadSettings read them last
    bool LangEnglish = true;       // exactly one of the three is true
    bool LangGerman = false;
    bool LangFrench = false;
    std::optional<PublishedPicture> Published;  // the last one; none since the start
    bool PathForArchive = false;  // the path chooser serves the archive's folder, not the pictures'

    [[nodiscard]] QString WorkFile(const QString& name) const { return Values.WorkFile(name); }

    // The settings for one more picture. What it looks like the file says, which may have been
    // edited by hand since the last one; where it goes stays as it is in force.
    [[nodiscard]] Settings ForPicture() const {
        Settings settings = LoadSettings(SettingsFile);
        static_cast<PictureTarget&>(settings) = static_cast<const PictureTarget&>(Values);
        return settings;
    }

    // The picture in this file is public since now, clock milliseconds. The one that was sent is
    // used up: it gets another name.
    void KeepPublished(const QString& file, qint64 now);

    // Has the working folder be there. One that has gone, as that in memory does at the end of the
    // user's session, gives way to the one that the settings name now.
    void FindWorkFolder();

    // Takes the working folder out of memory, where too little is left. False when it is elsewhere.
    [[nodiscard]] bool LeaveMemory();
};
