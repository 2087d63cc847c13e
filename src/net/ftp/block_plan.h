#pragma once

#include <QtGlobal>

// How an upload cuts a local file into blocks. Exactly one block is under way at a time, so that a
// file of any size needs the memory of a single block.
struct BlockPlan {
    static constexpr qint32 LargestBlock = 8196;  // bytes

    qint32 BlockSize = 0;   // bytes of a whole block, at most LargestBlock
    qint32 FullBlocks = 0;  // how many of them
    qint32 Remainder = 0;   // bytes of the final part, less than BlockSize

    // The plan for a file of totalBytes bytes; an empty file has a block size of 0 and no blocks.
    [[nodiscard]] static BlockPlan For(qint32 totalBytes);
};
