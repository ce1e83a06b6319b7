#include "LUMPlatform/Handle.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

/// What a handle points to. The pointer to the bytes comes first, so the two have one address.
struct Block {
    char* bytes;
    NSInteger size;
    std::int8_t state;
};

Block* blockOf(Handle handle)
{
    return reinterpret_cast<Block*>(handle);
}

}

Handle NewHandle(NSInteger size)
{
    if (size < 0)
        return nullptr;
    const std::size_t least = size > 0 ? static_cast<std::size_t>(size) : 1;
    auto* bytes = static_cast<char*>(std::malloc(least));
    auto* block = bytes ? new (std::nothrow) Block { bytes, size, 0 } : nullptr;
    if (!block) {
        std::free(bytes);
        return nullptr;
    }
    return &block->bytes;
}

OSStatus PtrToHand(const void* bytes, Handle* handle, NSInteger size)
{
    constexpr OSStatus kBadParameter = -50;
    if (!handle || size < 0 || (!bytes && size > 0))
        return kBadParameter;
    *handle = NewHandle(size);
    if (!*handle)
        return memFullErr;
    if (size > 0)
        std::memcpy(blockOf(*handle)->bytes, bytes, static_cast<std::size_t>(size));
    return 0;
}

void DisposeHandle(Handle handle)
{
    if (!handle)
        return;
    std::free(*handle);
    delete blockOf(handle);
}

NSInteger GetHandleSize(Handle handle)
{
    return handle ? blockOf(handle)->size : 0;
}

void HLock(Handle handle)
{
    if (handle)
        blockOf(handle)->state = static_cast<std::int8_t>(blockOf(handle)->state | kHandleLockedMask);
}

std::int8_t HGetState(Handle handle)
{
    return handle ? blockOf(handle)->state : static_cast<std::int8_t>(nilHandleErr);
}

void HSetState(Handle handle, std::int8_t state)
{
    if (handle)
        blockOf(handle)->state = state;
}
