#pragma once

#include <QIcon>
#include <QStringList>

// The icon of that name from the files icons/NAME-SIZE.png, in all sizes there are, of the first of
// the folders that has any; null when none has.
[[nodiscard]] QIcon ProgramIcon(const QStringList& folders, const QString& name);
