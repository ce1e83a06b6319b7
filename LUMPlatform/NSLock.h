#pragma once

#include "LUMPlatform/NSObject.h"

#include <atomic>
#include <mutex>

/// What can be locked. A std::lock_guard takes any of these:
///
///     std::lock_guard guard(*take); // take is an NSRef to a class that conforms
class NS_EXPORT NSLocking : public NSProtocol {
public:
    virtual void lock() = 0; ///< Selector: lock
    virtual void unlock() = 0; ///< Selector: unlock

protected:
    ~NSLocking() override = default;
};

namespace NSLockDetail {

/// Which thread holds a lock, so that misuse raises instead of being undefined.
class NS_EXPORT Holder {
public:
    bool isThisThread() const;
    void setThisThread();
    void clear();

private:
    std::atomic<const void*> mThread { nullptr };
};

}

/// A lock that one thread at a time holds, and once.
///
/// Misuse is defined: it raises NSInternalInconsistencyException and leaves the lock as it was. Threads: any.
///
///     auto lock = NSMake<NSLock>();
///     {
///         std::lock_guard guard(*lock);
///         ++shared;
///     }
class NS_EXPORT NSLock : public NSObject, public NSLocking {
public:
    static const NSClass& classObject();

    /// Waits until the lock is free and takes it. Raises when the caller holds it, which would wait for ever.
    /// Selector: lock
    void lock() override;
    /// Takes the lock if it is free; whether it did. False also for the caller that holds it.
    /// Selector: tryLock
    bool tryLock();
    /// Raises when the caller does not hold the lock: it is free, or another thread's.
    /// Selector: unlock
    void unlock() override;

protected:
    NSLock() = default;
    ~NSLock() override = default;

private:
    std::mutex mMutex;
    NSLockDetail::Holder mHolder;
};

/// A lock that its holder may take again, and gives back as many times. Threads: any.
///
///     auto lock = NSMake<NSRecursiveLock>();
///     std::lock_guard whole(*lock);
///     std::lock_guard part(*lock); // in a function that is also called alone
class NS_EXPORT NSRecursiveLock : public NSObject, public NSLocking {
public:
    static const NSClass& classObject();

    /// Waits until the lock is free or the caller's, and takes it once more.
    /// Selector: lock
    void lock() override;
    /// Takes the lock if it is free or the caller's; whether it did.
    /// Selector: tryLock
    bool tryLock();
    /// Gives back one of the caller's locks. Raises NSInternalInconsistencyException when it has none.
    /// Selector: unlock
    void unlock() override;

protected:
    NSRecursiveLock() = default;
    ~NSRecursiveLock() override = default;

private:
    std::mutex mMutex;
    NSLockDetail::Holder mHolder;
    NSUInteger mDepth = 0; // the holder's
};
