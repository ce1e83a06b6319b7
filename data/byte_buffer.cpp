#include "data/byte_buffer.h"

#include <algorithm>

namespace lum {

namespace {

constexpr std::size_t kNotWorthIt = 64; // bytes that may stay behind the end of a block

}

bool ByteBuffer::grow(std::size_t size)
{
    if (size > mCapacity || !mBytes) {
        std::size_t generous = mCapacity + mCapacity / 2;
        if (!(generous > size && takeBlock(generous)) && !takeBlock(size))
            return false;
    }
    mSize = size;
    return true;
}

void ByteBuffer::cut(std::size_t size)
{
    mSize = std::min(size, mSize);
    if (mCapacity - mSize > std::max(mCapacity / 8, kNotWorthIt))
        takeBlock(mSize); // if this fails, there is more room than needed
}

bool ByteBuffer::takeBlock(std::size_t capacity)
{
    // A size of 0 would free the block, and the null that comes back could not be told from a failure.
    void* block = mReallocate(mBytes, std::max<std::size_t>(capacity, 1));
    if (!block)
        return false;
    mBytes = static_cast<std::byte*>(block);
    mCapacity = capacity;
    return true;
}

}
