#pragma once

#include "picture/bitmap/pixel_memory.h"

#include <algorithm>
#include <utility>

// A picture as capture delivers it: 24 bits a pixel, blue first, the top row first, each row padded
// to four bytes. The drawing surface takes it over as it is.
struct Dib {
    // The pixels of copies are the same.
    class Bytes {
      public:
        [[nodiscard]] uchar* data() { return bytes.get(); }
        [[nodiscard]] const uchar* data() const { return bytes.get(); }
        [[nodiscard]] size_t size() const { return count; }
        [[nodiscard]] const uchar* begin() const { return data(); }
        [[nodiscard]] const uchar* end() const { return data() + count; }

        // The old contents are lost.
        void resize(size_t newCount) {
            bytes = TakePixels(static_cast<qint64>(newCount));
            count = bytes ? newCount : 0;
        }

        // To be drawn on: the pixels of this one, unless a copy has them too.
        [[nodiscard]] std::shared_ptr<uchar[]> Take() {
            if (bytes.use_count() > 1) {
                Bytes own;
                own.resize(count);
                if (own.bytes) std::copy(begin(), end(), own.data());
                *this = own;
            }
            return std::exchange(bytes, {});
        }

      private:
        std::shared_ptr<uchar[]> bytes;
        size_t count = 0;
    };

    int Width = 0;   // pixels
    int Height = 0;  // pixels
    Bytes Bits;      // Stride() * Height of them

    // Bytes from one row to the next.
    [[nodiscard]] int Stride() const { return RowBytes(Width); }
    [[nodiscard]] static int RowBytes(int width) { return (width * 3 + 3) / 4 * 4; }

    // Whether there is a picture, all of it.
    [[nodiscard]] bool Valid() const {
        return Width > 0 && Height > 0 && Bits.size() == size_t(Stride()) * size_t(Height);
    }

    // Empties it into a picture; null when it is none.
    [[nodiscard]] QImage Take() {
        if (!Valid()) return {};
        return PictureOf(Bits.Take(), {std::exchange(Width, 0), std::exchange(Height, 0)});
    }

    // Makes room for a picture of this size; the old contents are lost.
    void Resize(int width, int height) {
        Width = width;
        Height = height;
        Bits.resize(size_t(Stride()) * size_t(Height));
    }
};
