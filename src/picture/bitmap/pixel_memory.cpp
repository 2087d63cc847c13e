#include "picture/bitmap/pixel_memory.h"

#include "picture/bitmap/bitmap_file.h"

#include <QMutex>

#include <array>
#include <new>

namespace {

constexpr qint64 mostSpareBytes = 32 * 1024 * 1024;

struct Block {
    std::unique_ptr<uchar[]> Bytes;
    qint64 Count = 0;
};

// One for the picture that is being made, one for the frame that comes meanwhile.
class Spares {
  public:
    Block Take(qint64 count) {
        const QMutexLocker lock(&mutex);
        for (Block& block : blocks)
            if (block.Bytes && block.Count == count) return std::exchange(block, {});
        // Pictures are of another size now.
        blocks = {};
        return {};
    }

    void Put(Block&& block) {
        if (block.Count > mostSpareBytes) return;
        const QMutexLocker lock(&mutex);
        std::swap(blocks[0], blocks[1]);
        blocks[0] = std::move(block);
    }

  private:
    QMutex mutex;
    std::array<Block, 2> blocks;
};

// Never destroyed: a picture may be given back by whatever ends last.
Spares& Pool() {
    static auto* const pool = new Spares;
    return *pool;
}

}  // namespace

std::shared_ptr<uchar[]> TakePixels(qint64 bytes) {
    Block block = Pool().Take(bytes);
    if (!block.Bytes) block.Bytes.reset(new (std::nothrow) uchar[static_cast<size_t>(bytes)]);
    if (!block.Bytes) return {};
    return {block.Bytes.release(), [bytes](uchar* pixels) {
                Pool().Put({std::unique_ptr<uchar[]>(pixels), bytes});
            }};
}

QImage NewPicture(QSize size) {
    if (size.isEmpty()) return {};
    return PictureOf(TakePixels(BitmapStride(size.width(), 24) * size.height()), size);
}

QImage PictureOf(std::shared_ptr<uchar[]> pixels, QSize size) {
    if (!pixels) return {};
    using Owner = std::shared_ptr<uchar[]>;
    uchar* const first = pixels.get();
    return {first,
            size.width(),
            size.height(),
            BitmapStride(size.width(), 24),
            QImage::Format_BGR888,
            [](void* owner) { delete static_cast<Owner*>(owner); },
            new Owner(std::move(pixels))};
}
