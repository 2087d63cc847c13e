#pragma once

#include "base/profile_file.h"
#include "core/settings/setting_table.h"
#include "texts/texts.h"

#include <QString>

#include <optional>

// The settings file of a program folder.
[[nodiscard]] QString SettingsFileIn(const QString& programFolder);

// The language that the file names; none: it names none that there is.
[[nodiscard]] std::optional<Texts::Language> LanguageIn(const QString& file);

// Reads the settings from the file, whose folder is the program folder. Reading never fails: what
// is missing or out of range is replaced as the table of settings says. Folders given relative to
// the program folder are created. A WorkPath that is not there, of another machine perhaps, gives
// way to WorkFolder::Usual, so that pictures are made all the same.
// A server that is written as an address of several parts is taken apart: its port counts, of the
// others those whose own keys are empty.
// entries: what counts in place of what the file says; of several for one key the last.
[[nodiscard]] Settings LoadSettings(const QString& file, const QList<ProfileEntry>& entries = {});

// The same from another source, with the full path of the program folder.
[[nodiscard]] Settings LoadSettings(const QString& programFolder, const SettingSource& source);

// The folder that a setting names, with a separator at its end: a relative one lies below the
// program folder and is created when missing. Empty stays empty; a folder that cannot be created
// shows when it is used.
[[nodiscard]] QString SettingFolder(const QString& programFolder, const QString& written);
