#include "platform/proplists/value_table.h"

#include <cstring>

namespace platform {
namespace {

std::uint32_t hashOf(std::string_view bytes)
{
    constexpr std::uint64_t kFactor = 0x9E37'79B9'7F4A'7C15U;
    std::uint64_t hash = bytes.size();
    const auto mix = [&](std::uint64_t word) {
        hash = (hash ^ word) * kFactor;
        hash ^= hash >> 29;
    };
    std::uint64_t word = 0;
    for (; bytes.size() >= sizeof word; bytes.remove_prefix(sizeof word)) {
        std::memcpy(&word, bytes.data(), sizeof word);
        mix(word);
    }
    word = 0;
    std::memcpy(&word, bytes.data(), bytes.size());
    mix(word);
    return static_cast<std::uint32_t>(hash >> 32);
}

}

std::size_t ValueTable::endOf(std::size_t index) const
{
    return index + 1 < mValues.size() ? mValues[index + 1].begin : mEnd;
}

std::string_view ValueTable::value(std::size_t index) const
{
    const std::size_t begin = mValues[index].begin;
    return std::string_view(mBytes).substr(begin, endOf(index) - begin);
}

std::uint32_t ValueTable::add(std::uint32_t number)
{
    if ((mValues.size() + 1) * 2 > mIndex.size())
        grow();
    const std::string_view added = std::string_view(mBytes).substr(mEnd);
    const std::uint32_t hash = hashOf(added);
    const std::size_t mask = mIndex.size() - 1;
    std::size_t slot = hash & mask;
    for (; mIndex[slot] != 0; slot = (slot + 1) & mask) {
        const Value& known = mValues[mIndex[slot] - 1];
        if (known.hash == hash && value(mIndex[slot] - 1) == added) {
            mBytes.resize(mEnd);
            return known.number;
        }
    }
    mValues.push_back({ mEnd, hash, number });
    mIndex[slot] = static_cast<std::uint32_t>(mValues.size());
    mEnd = mBytes.size();
    return number;
}

void ValueTable::grow()
{
    constexpr std::size_t kFirst = 64;
    mIndex.assign(mIndex.empty() ? kFirst : mIndex.size() * 2, 0);
    const std::size_t mask = mIndex.size() - 1;
    for (std::size_t index = 0; index < mValues.size(); ++index) {
        std::size_t slot = mValues[index].hash & mask;
        while (mIndex[slot] != 0)
            slot = (slot + 1) & mask;
        mIndex[slot] = static_cast<std::uint32_t>(index + 1);
    }
}

}
