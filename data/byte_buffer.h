#pragma once

#include <cstddef>
#include <cstdlib>
#include <span>
#include <utility>

namespace lum {

/// Grows or makes a block in the manner of std::realloc. Tests pass one that refuses.
using Reallocate = void* (*)(void* block, std::size_t size);

/// Bytes in one block of malloc, which an NSData takes over without a copy.
///
/// Growing keeps what is there and leaves unset what it adds. The block grows by half of itself at least, so
/// that many small steps, as inflation takes them, cost one pass over the bytes whatever the allocator does:
/// without the spare room, one that moves the block each time would need minutes for what takes a second.
class ByteBuffer {
public:
    explicit ByteBuffer(Reallocate reallocate = std::realloc) : mReallocate(reallocate) { }
    ByteBuffer(ByteBuffer&& other) noexcept
        : mReallocate(other.mReallocate)
        , mBytes(std::exchange(other.mBytes, nullptr))
        , mSize(std::exchange(other.mSize, 0))
        , mCapacity(std::exchange(other.mCapacity, 0))
    {
    }
    ByteBuffer& operator=(ByteBuffer other) noexcept
    {
        std::swap(mReallocate, other.mReallocate);
        std::swap(mBytes, other.mBytes);
        std::swap(mSize, other.mSize);
        std::swap(mCapacity, other.mCapacity);
        return *this;
    }
    ~ByteBuffer() { std::free(mBytes); }

    /// False, and nothing changed, when there is no memory. Afterwards there is a block, even for no bytes.
    [[nodiscard]] bool grow(std::size_t size);
    /// Drops what is behind `size`, and spare room that is worth it.
    void cut(std::size_t size);

    std::byte* data() { return mBytes; }
    const std::byte* data() const { return mBytes; }
    std::size_t size() const { return mSize; }
    std::span<const std::byte> bytes() const { return { mBytes, mSize }; }

    /// Gives up the block, which the caller has to std::free.
    [[nodiscard]] std::byte* leak()
    {
        mSize = mCapacity = 0;
        return std::exchange(mBytes, nullptr);
    }

private:
    bool takeBlock(std::size_t capacity);

    Reallocate mReallocate;
    std::byte* mBytes = nullptr;
    std::size_t mSize = 0;
    std::size_t mCapacity = 0;
};

}
