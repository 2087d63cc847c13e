#pragma once

#include <QByteArray>
#include <QString>

// The size in bytes that a listing in the form of "ls -l" gives for the file `name`, the last line
// of that name counting; 0 when it is not listed. The size is the fifth column, the name what
// follows the last blank, so that names with blanks are not found.
[[nodiscard]] qint32 SizeInListing(const QByteArray& listing, const QString& name);
