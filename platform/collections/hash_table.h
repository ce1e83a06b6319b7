#pragma once

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/objects/keyed_hash.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace platform {

/// The table behind dictionaries and sets: the entries in a dense list in the order of their keys' first
/// arrival, and, unless they are few, an open-addressed index into that list. Walking it is walking the list,
/// so the order is the same in every run.
///
/// Positions are places in the list; a removed entry leaves a hole (a null key) until the next rebuild. Calls
/// to isEqual may run foreign code, which may end objects or change this very table: keys are kept alive
/// across the call, and a change raises NSGenericException.
template<typename Value> class HashTable {
public:
    struct Entry {
        NSUInteger hash;
        NSId key;
        [[no_unique_address]] Value value;
    };
    static constexpr NSUInteger kNone = ~NSUInteger { 0 };

    NSUInteger count() const { return mLive; }
    NSUInteger mutations() const { return mMutations; }
    NSUInteger endPosition() const { return mEntries.size(); }
    const Entry& entry(NSUInteger position) const { return mEntries[position]; }

    /// The first position from `position` on that holds an entry, or endPosition.
    NSUInteger nextPosition(NSUInteger position) const
    {
        position = std::max(position, mFirst);
        while (position < mEntries.size() && !mEntries[position].key)
            ++position;
        return position;
    }

    /// Where the key equal to `key` is; kNone when there is none.
    NSUInteger find(const NSId& key) const { return mLive ? find(key, key->hash()) : kNone; }

    /// The value to fill in for `key`; `stored()` gives the key to keep should it be new.
    template<typename Stored> Value& insert(const NSId& key, const Stored& stored)
    {
        const NSUInteger hash = key->hash();
        NSUInteger position = mLive ? find(key, hash) : kNone;
        ++mMutations;
        if (position != kNone)
            return mEntries[position].value;
        NSId kept = stored();
        if (needsIndex(mEntries.size() + 1))
            rebuild(mLive + 1);
        if (mEntries.size() >= kMaxEntries)
            throw NSException(NSMallocException, "a collection is full");
        mEntries.push_back({ hash, std::move(kept), Value() });
        addToIndex(mEntries.size() - 1);
        ++mLive;
        return mEntries.back().value;
    }

    /// Takes the entry of `key` out; it ends in the caller's hands, when the table is whole again.
    Entry remove(const NSId& key)
    {
        NSUInteger position = find(key);
        if (position == kNone)
            return {};
        Entry removed = std::move(mEntries[position]);
        mEntries[position].key = nullptr;
        ++mMutations;
        --mLive;
        mFirst = nextPosition(mFirst);
        if (mEntries.size() - mLive > mLive * 2 + kFewHoles)
            rebuild(mLive);
        return removed;
    }

    void removeAll()
    {
        std::vector<Entry> removed;
        removed.swap(mEntries); // ends last, when the table is whole again
        mIndex.clear();
        mLive = 0;
        mFirst = 0;
        ++mMutations;
    }

    void reserve(NSUInteger count)
    {
        mEntries.reserve(count);
        if (needsIndex(count))
            rebuild(count);
    }

private:
    static constexpr NSUInteger kMaxEntries = 0xffff'fffe;
    static constexpr NSUInteger kFewHoles = 32;
    static constexpr NSUInteger kScanned = 8; // up to here the list is searched itself, which saves the index

    bool needsIndex(NSUInteger count) const { return count > kScanned && count * 2 > mIndex.size(); }

    std::size_t slotOf(NSUInteger hash) const
    {
        return static_cast<std::size_t>((hash * hashMultiplier()) >> std::countl_zero(mIndex.size() - 1));
    }

    NSUInteger find(const NSId& key, NSUInteger hash) const
    {
        if (mIndex.empty()) {
            for (NSUInteger position = mFirst; position < mEntries.size(); ++position)
                if (isEntry(position, key, hash))
                    return position;
            return kNone;
        }
        for (std::size_t slot = slotOf(hash); mIndex[slot] != 0; slot = (slot + 1) & (mIndex.size() - 1))
            if (isEntry(mIndex[slot] - 1, key, hash))
                return mIndex[slot] - 1;
        return kNone;
    }

    bool isEntry(NSUInteger position, const NSId& key, NSUInteger hash) const
    {
        const Entry& entry = mEntries[position];
        return entry.hash == hash && entry.key && (entry.key == key || isEqual(key, entry.key));
    }

    bool isEqual(const NSId& key, NSId kept) const
    {
        const NSUInteger before = mMutations;
        const bool equal = key->isEqual(kept);
        if (mMutations != before)
            throw NSException(NSGenericException, "a collection was mutated while it was searched");
        return equal;
    }

    void addToIndex(NSUInteger position)
    {
        if (mIndex.empty())
            return;
        std::size_t slot = slotOf(mEntries[position].hash);
        while (mIndex[slot] != 0)
            slot = (slot + 1) & (mIndex.size() - 1);
        mIndex[slot] = static_cast<std::uint32_t>(position + 1);
    }

    /// Closes the holes and makes the index large enough for `count` entries and half as many again.
    void rebuild(NSUInteger count)
    {
        mFirst = 0;
        std::erase_if(mEntries, [](const Entry& entry) { return !entry.key; });
        mIndex.clear();
        if (count > kScanned)
            mIndex.assign(std::bit_ceil(count * 3 + 4), 0);
        for (NSUInteger position = 0; position < mEntries.size(); ++position)
            addToIndex(position);
    }

    std::vector<Entry> mEntries;
    std::vector<std::uint32_t> mIndex; // position + 1; 0 is free. A power of two, at most half full.
    NSUInteger mLive = 0;
    NSUInteger mFirst = 0; // no entry before it, so that taking out the first again and again is linear
    NSUInteger mMutations = 0;
};

struct NoValue { };

class DictionaryTable : public HashTable<NSId> { };
class SetTable : public HashTable<NoValue> { };

}
