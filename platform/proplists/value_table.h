#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The values of a binary property list as bytes, one behind the other, each once.
class ValueTable {
public:
    struct Value {
        std::size_t begin;
        std::uint32_t hash;
        std::uint32_t number; ///< That of the object.
    };
    static constexpr std::uint32_t kNone = 0xFFFF'FFFF;

    /// Where the bytes of the next value are appended, before add() is called.
    std::string& bytes() { return mBytes; }

    /// Takes what was appended as a value with this number; or, when there is an equal one, takes it back and
    /// answers the number of that.
    std::uint32_t add(std::uint32_t number);

    /// Of all values, in bytes.
    std::size_t size() const { return mEnd; }
    /// The bytes of the values, in the order in which they were added.
    std::string_view value(std::size_t index) const;

private:
    std::size_t endOf(std::size_t index) const;
    void grow();

    std::string mBytes;
    std::vector<Value> mValues;
    std::vector<std::uint32_t> mIndex; // the value's place + 1; 0 is free. A power of two, at most half full.
    std::size_t mEnd = 0; // of the last value added
};

}
