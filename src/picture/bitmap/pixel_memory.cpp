#include "picture/bitmap/pixel_memory.h"

#include "picture/bitmap/bitmap_file.h"
#include "platform/large_pages.h"

#include <QMutex>

#include <array>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr qint64 mostSpareBytes = 32 * 1024 * 1024;
// Who goes through the last row in steps of several pixels may look a little beyond it.
constexpr qint64 beyond = 64;

struct Block {
    std::unique_ptr<uchar[]> Owned;
    uchar* Bytes = nullptr;
    qint64 Count = 0;
};

// Its bytes are null where there is no memory.
Block NewBlock(qint64 count) {
    const qint64 least = count + beyond;
    const qint64 pages = least < LargePage ? 0 : (least + LargePage - 1) / LargePage;
    // One more, to begin where a page does; what is not touched takes no memory.
    auto room = static_cast<size_t>(pages > 0 ? (pages + 1) * LargePage : least);
    Block block{std::unique_ptr<uchar[]>(new (std::nothrow) uchar[room]), nullptr, count};
    void* first = block.Owned.get();
    if (first && pages > 0) {
        const qint64 used = pages * LargePage;
        first = std::align(LargePage, static_cast<size_t>(used), first, room);
        UseLargePages(first, used);
    }
    block.Bytes = static_cast<uchar*>(first);
    return block;
}

// One for the picture that is being made, one for the frame that comes meanwhile.
class Spares {
  public:
    Block Take(qint64 count) {
        {
            const QMutexLocker lock(&mutex);
            for (Block& block : blocks)
                if (block.Bytes && block.Count == count) return std::exchange(block, {});
            // Pictures are of another size now.
            blocks = {};
        }
        return NewBlock(count);
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

QImage NewPicture(QSize size) {
    if (size.isEmpty()) return {};
    const qint64 stride = BitmapStride(size.width(), 24);
    auto block = std::make_unique<Block>(Pool().Take(stride * size.height()));
    if (!block->Bytes) return {};
    const auto giveBack = [](void* owned) {
        const std::unique_ptr<Block> given(static_cast<Block*>(owned));
        Pool().Put(std::move(*given));
    };
    uchar* const first = block->Bytes;
    return {first,    size.width(),   size.height(), stride, QImage::Format_BGR888,
            giveBack, block.release()};
}
