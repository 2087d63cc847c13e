#pragma once

#include <QString>

#include <optional>

class FolderClaim;
class Termination;

// Takes the folder. Where another Stillpost has it, that one is asked to come to the front, the
// user is told where nothing comes, and the result is the exit status of this one. The message goes
// when the system ends the program.
[[nodiscard]] std::optional<int> EndSecondStart(FolderClaim& claim, const QString& folder,
                                                bool display, const Termination& termination);

// What is to be said of the one that has the folder: a text of the section "FolderInUse".
[[nodiscard]] QString FolderInUseText(const FolderClaim& claim, const QString& folder,
                                      const QString& key);
