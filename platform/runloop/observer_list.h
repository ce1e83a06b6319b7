#pragma once

#include "platform/runloop/observation.h"

#include <memory>
#include <vector>

namespace platform {

/// Registrations in their order, made so that a snapshot is taken in constant time and read without a lock.
///
/// Additions go behind what a snapshot sees, into the same memory. Removals are marks in the registrations,
/// which also hold for snapshots; a list that is mostly marks is written anew.
class ObserverList {
    using Block = std::vector<std::shared_ptr<Observation>>; // never grows in place: snapshots point into it

public:
    /// What the list held at one moment.
    class Snapshot {
    public:
        Snapshot() = default;
        const std::shared_ptr<Observation>* begin() const { return mBegin; }
        const std::shared_ptr<Observation>* end() const { return mEnd; }

    private:
        friend class ObserverList;
        explicit Snapshot(const std::shared_ptr<Block>& block)
            : mBlock(block), mBegin(block->data()), mEnd(mBegin + block->size())
        {
        }

        std::shared_ptr<Block> mBlock;
        const std::shared_ptr<Observation>* mBegin = nullptr;
        const std::shared_ptr<Observation>* mEnd = nullptr;
    };

    void add(std::shared_ptr<Observation> observation);
    /// Tells that one of the registrations was marked as removed.
    void didRemoveOne();
    /// How many are not removed.
    std::size_t count() const { return mCount; }
    Snapshot snapshot() const { return mBlock ? Snapshot(mBlock) : Snapshot(); }

private:
    void rewrite(std::size_t capacity);

    std::shared_ptr<Block> mBlock;
    std::size_t mCount = 0;
};

}
