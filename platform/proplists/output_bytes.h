#pragma once

#include "LUMPlatform/NSData.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace platform {

/// Bytes that are being written, and become data without a copy.
class OutputBytes {
public:
    std::size_t size() const { return mSize; }

    void append(std::string_view text)
    {
        std::memcpy(room(text.size()), text.data(), text.size());
        mSize += text.size();
    }
    void append(char character) { append(std::string_view(&character, 1)); }

    /// Where to write up to `size` more bytes; wrote() tells how many they were.
    char* room(std::size_t size)
    {
        if (size > mCapacity - mSize)
            grow(size);
        return mBytes.get() + mSize;
    }
    void wrote(std::size_t size) { mSize += size; }

    NSRef<NSData> data() &&
    {
        if (void* cut = mSize ? std::realloc(mBytes.get(), mSize) : nullptr) {
            (void)mBytes.release();
            mBytes.reset(static_cast<char*>(cut));
        }
        return NSData::dataWithBytesNoCopy(mBytes.release(), mSize);
    }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void grow(std::size_t more)
    {
        constexpr std::size_t kLeast = 1024;
        const std::size_t capacity = std::max(mSize + more, mCapacity * 2 + kLeast);
        void* grown = std::realloc(mBytes.get(), capacity);
        if (!grown)
            throw std::bad_alloc();
        (void)mBytes.release();
        mBytes.reset(static_cast<char*>(grown));
        mCapacity = capacity;
    }

    std::unique_ptr<char[], Free> mBytes;
    std::size_t mSize = 0;
    std::size_t mCapacity = 0;
};

}
