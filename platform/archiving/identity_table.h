#pragma once

#include "LUMPlatform/NSObject.h"

#include <vector>

namespace platform {

/// Numbers for objects by their identity. Keeps the objects, so that none is taken for one that has ended.
class IdentityTable {
public:
    static constexpr std::uint32_t kNone = 0xFFFF'FFFF;

    std::uint32_t find(const NSObject& object) const
    {
        return mIndex.empty() ? kNone : numberAt(slotOf(object));
    }
    /// The object must not be there yet.
    void add(const NSId& object, std::uint32_t number)
    {
        if ((mEntries.size() + 1) * 2 > mIndex.size())
            grow();
        mEntries.push_back({ object, number });
        mIndex[slotOf(*object)] = static_cast<std::uint32_t>(mEntries.size());
    }

private:
    struct Entry {
        NSId object;
        std::uint32_t number;
    };

    std::uint32_t numberAt(std::size_t slot) const
    {
        return mIndex[slot] ? mEntries[mIndex[slot] - 1].number : kNone;
    }
    /// Where the object is, or could go.
    std::size_t slotOf(const NSObject& object) const
    {
        // Multiplying by the golden ratio spreads addresses, which differ in few bits.
        const std::uint64_t hash = reinterpret_cast<std::uintptr_t>(&object) * 0x9E37'79B9'7F4A'7C15U;
        const std::size_t mask = mIndex.size() - 1;
        std::size_t slot = (hash >> 32) & mask;
        while (mIndex[slot] && mEntries[mIndex[slot] - 1].object.get() != &object)
            slot = (slot + 1) & mask;
        return slot;
    }
    void grow()
    {
        constexpr std::size_t kFirst = 64;
        mIndex.assign(mIndex.empty() ? kFirst : mIndex.size() * 2, 0);
        for (std::size_t at = 0; at < mEntries.size(); ++at)
            mIndex[slotOf(*mEntries[at].object)] = static_cast<std::uint32_t>(at + 1);
    }

    std::vector<Entry> mEntries;
    std::vector<std::uint32_t> mIndex; // the entry's place + 1; 0 is free. A power of two, at most half full.
};

}
