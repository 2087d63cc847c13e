#include "platform/row_writer.h"

#include <QFile>

#include <sys/uio.h>
#include <algorithm>
#include <array>

bool WriteRows(QFile& file, const RowsToWrite& rows) {
    constexpr int mostPieces = 1024;  // that the system takes at once
    static const uchar zeros[4] = {};
    std::array<iovec, mostPieces> pieces;
    const int piecesARow = rows.Padding > 0 ? 2 : 1;
    qint64 place = file.pos();
    const uchar* row = rows.First;
    for (int rest = rows.Count; rest > 0;) {
        const int count = std::min(rest, mostPieces / piecesARow);
        auto piece = pieces.begin();
        for (int i = 0; i < count; ++i, row += rows.Step) {
            *piece++ = {const_cast<uchar*>(row), static_cast<size_t>(rows.Bytes)};
            if (rows.Padding > 0)
                *piece++ = {const_cast<uchar*>(zeros), static_cast<size_t>(rows.Padding)};
        }
        const qint64 bytes = count * (rows.Bytes + rows.Padding);
        if (pwritev(file.handle(), pieces.data(), count * piecesARow, place) != bytes) return false;
        place += bytes;
        rest -= count;
    }
    return file.seek(place);
}
