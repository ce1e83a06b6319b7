#include "LUMPlatform/NSWeak.h"

#include "platform/objects/mutex.h"

#include <thread>
#include <unordered_map>

/// Finds the record of an object that has weak references. Sharded by address, so that threads which set
/// delegates or end objects seldom meet. Objects without weak references never come here.
struct NSWeakTable {
    static NSWeakRecord* recordOf(const NSObject& object)
    {
        Shard& shard = shardOf(object);
        platform::MutexLock lock(shard.lock);
        NSWeakRecord*& record = shard.records[&object];
        if (!record) {
            record = new NSWeakRecord(object);
            object.mCount.fetch_or(NSObject::kHasWeak, std::memory_order_relaxed);
        }
        record->retain();
        return record;
    }

    static void objectEnds(const NSObject& object)
    {
        NSWeakRecord* record = nullptr;
        {
            Shard& shard = shardOf(object);
            platform::MutexLock lock(shard.lock);
            auto found = shard.records.find(&object);
            record = found->second;
            shard.records.erase(found);
        }
        record->lock();
        record->mObject.store(nullptr, std::memory_order_release);
        record->unlock();
        record->release();
    }

    static bool retainUnlessEnding(const NSObject& object) { return object.retainUnlessEnding(); }

private:
    struct Shard {
        platform::Mutex lock;
        std::unordered_map<const NSObject*, NSWeakRecord*> records NS_GUARDED_BY(lock);
    };

    static Shard& shardOf(const NSObject& object)
    {
        static constexpr std::size_t kShards = 64;
        // Never destroyed: objects end until the very end of the process.
        static Shard* const shards = new Shard[kShards];
        return shards[(reinterpret_cast<std::uintptr_t>(&object) >> 4) % kShards];
    }
};

void NSObject::weakEnds() const noexcept
{
    NSWeakTable::objectEnds(*this);
}

NSWeakRecord* NSWeakRecord::of(const NSObject& object)
{
    return NSWeakTable::recordOf(object);
}

NSObject* NSWeakRecord::retainedObject() const noexcept
{
    // The lock keeps the object from being destroyed between the look and the count.
    bool shared = !__libc_single_threaded;
    if (shared)
        lock();
    const NSObject* object = mObject.load(std::memory_order_relaxed);
    if (object && !NSWeakTable::retainUnlessEnding(*object))
        object = nullptr;
    if (shared)
        unlock();
    return const_cast<NSObject*>(object);
}

void NSWeakRecord::lock() const noexcept
{
    // Held for a handful of instructions, so spinning is cheaper than a mutex; a holder that lost its
    // processor gets it back by the yield.
    while (mLock.test_and_set(std::memory_order_acquire))
        std::this_thread::yield();
}
