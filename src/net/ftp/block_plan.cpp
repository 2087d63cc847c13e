#include "net/ftp/block_plan.h"

BlockPlan BlockPlan::For(qint32 totalBytes) {
    BlockPlan plan;
    plan.BlockSize = LargestBlock;
    while (plan.BlockSize > totalBytes) plan.BlockSize -= 1000;
    if (plan.BlockSize < 1000) plan.BlockSize = totalBytes;
    if (plan.BlockSize < 1) return {};
    plan.FullBlocks = totalBytes / plan.BlockSize;
    plan.Remainder = totalBytes - plan.FullBlocks * plan.BlockSize;
    return plan;
}
