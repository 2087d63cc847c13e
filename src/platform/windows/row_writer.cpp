#include "platform/row_writer.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <vector>

bool WriteRows(QFile& file, const RowsToWrite& rows) {
    constexpr qint64 pieceBytes = 256 * 1024;  // stays in the processor's cache
    const qint64 stride = rows.Bytes + rows.Padding;
    const int rowsAtOnce = static_cast<int>(std::max<qint64>(1, pieceBytes / stride));
    std::vector<char> piece(static_cast<size_t>(rowsAtOnce * stride));
    const uchar* row = rows.First;
    for (int rest = rows.Count; rest > 0;) {
        const int count = std::min(rest, rowsAtOnce);
        for (int i = 0; i < count; ++i, row += rows.Step)
            std::memcpy(piece.data() + i * stride, row, static_cast<size_t>(rows.Bytes));
        if (file.write(piece.data(), count * stride) != count * stride) return false;
        rest -= count;
    }
    return true;
}
