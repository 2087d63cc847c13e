#pragma once

#include <QByteArray>
#include <QString>

// One line of a server's directory listing, as far as a size is looked up in it.
struct ListedFile {
    QString Name;     // what follows the last blank: a name with blanks in it is cut
    qint32 Size = 0;  // bytes; 0 where the fifth column is not a number

    bool operator==(const ListedFile&) const = default;
};

// Reads a line in the form of "ls -l" (without its line end): the size is the fifth column.
[[nodiscard]] ListedFile ParseListingLine(const QString& line);

// The size that the listing gives for the file `name`, the last line of that name counting; 0 when
// it is not listed.
[[nodiscard]] qint32 SizeInListing(const QByteArray& listing, const QString& name);
