#pragma once

#include "LUMPlatform/NSObject.h"

#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <utility>

/// The shared record behind all weak references to one object. Internal to NSWeak.
class NS_EXPORT NSWeakRecord {
public:
    /// The record of a live object, made at its first weak reference; the caller owns one count of it.
    static NSWeakRecord* of(const NSObject& object);
    /// One more reference to the object; null once its end has begun.
    NSObject* retainedObject() const noexcept;
    /// Whether the object is `object`; for null, whether its end has begun.
    bool refersTo(const NSObject* object) const noexcept
    {
        return mObject.load(std::memory_order_acquire) == object;
    }

    void retain() noexcept { NSCountUp(mCount); }
    void release() noexcept
    {
        if (NSCountDown(mCount) == 1)
            delete this;
    }

private:
    friend struct NSWeakTable;
    explicit NSWeakRecord(const NSObject& object) : mObject(&object) { }
    void lock() const noexcept;
    void unlock() const noexcept { mLock.clear(std::memory_order_release); }

    std::atomic<std::uint64_t> mCount { 1 };
    mutable std::atomic_flag mLock = ATOMIC_FLAG_INIT;
    std::atomic<const NSObject*> mObject; // null once the object's end has begun; set under mLock
};

/// A reference that does not keep its object alive and reads as null once the object's end has begun.
///
/// For delegates, targets and other back pointers. To use the object take a reference first:
///
///     class Download : public NSObject {
///     public:
///         void start()
///         {
///             if (NSRef<DownloadDelegate> delegate = mDelegate.get())
///                 delegate->downloadDidStart(*this);
///         }
///
///     private:
///         NSWeak<DownloadDelegate> mDelegate;
///     };
///
/// Threads: as NSRef; get() is safe against the object ending on another thread at that moment.
template<typename T> class NSWeak {
public:
    NSWeak() = default;
    NSWeak(std::nullptr_t) { }
    template<typename U>
    requires std::convertible_to<U*, T*> NSWeak(const NSRef<U>& object)
        : mRecord(object ? NSWeakRecord::of(*NSObjectOf(object.get())) : nullptr), mPointer(object.get())
    {
    }
    NSWeak(const NSWeak& other) : mRecord(other.mRecord), mPointer(other.mPointer)
    {
        if (mRecord)
            mRecord->retain();
    }
    NSWeak(NSWeak&& other) noexcept
        : mRecord(std::exchange(other.mRecord, nullptr)), mPointer(std::exchange(other.mPointer, nullptr))
    {
    }
    NSWeak& operator=(NSWeak other) noexcept
    {
        std::swap(mRecord, other.mRecord);
        std::swap(mPointer, other.mPointer);
        return *this;
    }
    ~NSWeak()
    {
        if (mRecord)
            mRecord->release();
    }

    /// A reference to the object, or null once its end has begun.
    NSRef<T> get() const
    {
        if (!mRecord || !mRecord->retainedObject())
            return nullptr;
        return NSAdopt(mPointer);
    }
    explicit operator bool() const { return static_cast<bool>(get()); }
    /// Whether get() would be `object`, without taking a reference to it: null asks whether there is none
    /// left.
    bool refersTo(const NSObject* object) const noexcept
    {
        return mRecord ? mRecord->refersTo(object) : object == nullptr;
    }

private:
    NSWeakRecord* mRecord = nullptr;
    T* mPointer = nullptr;
};
