#pragma once

#include "halyard/Driver.h"

#include <cstdint>
#include <vector>

namespace zan::halyard {

/// A stretch of memory that is read at one go.
struct MemoryBlock
{
    std::int32_t address = 0;
    std::int32_t length = 0;

    friend bool operator==(const MemoryBlock&, const MemoryBlock&) = default;
};

/// Brings fields into the order of a layout and drops those that occur twice.
void sortLayout(MemoryLayout& layout);

/// The fewest blocks, in order of address, that cover every field of a sorted layout within the limits. A field that
/// fits into one block is never divided, so that its bytes are always of one moment; a longer one takes several.
/// Fields that leave the 32-bit address space are left out.
std::vector<MemoryBlock> planBlocks(const MemoryLayout& layout, const BlockLimits& limits);

} // namespace zan::halyard
