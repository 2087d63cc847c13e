#include "picture/bitmap/bitmap_runs.h"

#include "picture/bitmap/bitmap_file.h"
#include "picture/bitmap/byte_reader.h"

#include <algorithm>

namespace {

// What the second byte means behind a zero; a larger one counts pixels that follow as they are.
enum Escape { EndOfLine, EndOfBitmap, Move };

class RunRows {
  public:
    explicit RunRows(QSize ownSize)
        : Rows(BitmapStride(ownSize.width(), 8) * ownSize.height(), '\0'), size(ownSize) {}

    [[nodiscard]] bool Full() const {
        return y >= size.height() || (y == size.height() - 1 && x >= size.width());
    }
    // What does not fit into the row is left out.
    void Put(int index) {
        if (x >= size.width() || y >= size.height()) return;
        Rows.data()[y * BitmapStride(size.width(), 8) + x++] = static_cast<char>(index);
    }
    void Go(int right, int up) {
        x = std::min(x + right, size.width());
        y = std::min(y + up, size.height());
    }
    void NextLine() {
        x = 0;
        Go(0, 1);
    }

    QByteArray Rows;

  private:
    QSize size;
    int x = 0;
    int y = 0;
};

// The pixel with that number among the ones that a byte, or several, hold.
int Index(QByteArrayView bytes, int number, int bits) {
    if (bits == 8) return static_cast<uchar>(bytes[number]);
    const int both = static_cast<uchar>(bytes[number / 2]);
    return number % 2 == 0 ? both >> 4 : both & 15;
}

}  // namespace

std::optional<QByteArray> DecodeRuns(QByteArrayView coded, int bits, QSize size) {
    RunRows rows(size);
    ByteReader in(coded);
    while (!rows.Full()) {
        const int count = in.Byte();
        const QByteArrayView value = in.Take(1);
        if (in.Failed()) return std::nullopt;
        const int escape = static_cast<uchar>(value.front());
        if (count > 0) {
            for (int i = 0; i < count; ++i) rows.Put(Index(value, bits == 8 ? 0 : i % 2, bits));
        } else if (escape == EndOfLine) {
            rows.NextLine();
        } else if (escape == EndOfBitmap) {
            break;
        } else if (escape == Move) {
            const int right = in.Byte();
            rows.Go(right, in.Byte());
        } else {
            const int bytes = (escape * bits + 7) / 8;
            const QByteArrayView plain = in.Take(bytes);
            if (in.Failed()) return std::nullopt;
            for (int i = 0; i < escape; ++i) rows.Put(Index(plain, i, bits));
            // They are padded to whole words, except perhaps the last.
            if (bytes % 2 != 0) in.Byte();
        }
    }
    return rows.Rows;
}
