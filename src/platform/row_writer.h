#pragma once

#include <QtGlobal>

class QFile;

// Rows of pixels in memory.
struct RowsToWrite {
    const uchar* First = nullptr;
    qptrdiff Step = 0;  // from one row to the next, bytes
    int Count = 0;
    qint64 Bytes = 0;    // of one row that count
    qint64 Padding = 0;  // zeros, fewer than four, that follow each row in the file
};

// Writes the rows one behind the other at the file's place, without a detour through other memory
// where the system can. False when not all of it was written.
[[nodiscard]] bool WriteRows(QFile& file, const RowsToWrite& rows);
