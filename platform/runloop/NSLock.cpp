#include "LUMPlatform/NSLock.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

namespace {

constexpr NSMethod kLockMethods[] = {
    NSMethodOf<"lock", &NSLock::lock>(),
    NSMethodOf<"tryLock", &NSLock::tryLock>(),
    NSMethodOf<"unlock", &NSLock::unlock>(),
};

constexpr NSMethod kRecursiveLockMethods[] = {
    NSMethodOf<"lock", &NSRecursiveLock::lock>(),
    NSMethodOf<"tryLock", &NSRecursiveLock::tryLock>(),
    NSMethodOf<"unlock", &NSRecursiveLock::unlock>(),
};

/// Its address tells threads that live at the same time apart.
thread_local const char tThread = 0;

[[noreturn]] void misused(const char* how)
{
    throw NSException(NSInternalInconsistencyException, how);
}

}

bool NSLockDetail::Holder::isThisThread() const
{
    return mThread.load(std::memory_order_relaxed) == &tThread;
}

void NSLockDetail::Holder::setThisThread()
{
    mThread.store(&tThread, std::memory_order_relaxed);
}

void NSLockDetail::Holder::clear()
{
    mThread.store(nullptr, std::memory_order_relaxed);
}

const NSClass& NSLock::classObject()
{
    static const NSClass& type = NSClass::define("NSLock", &NSObject::classObject(), kLockMethods);
    return type;
}

void NSLock::lock()
{
    if (mHolder.isThisThread())
        misused("a lock is taken again by the thread that holds it");
    mMutex.lock();
    mHolder.setThisThread();
}

bool NSLock::tryLock()
{
    if (mHolder.isThisThread() || !mMutex.try_lock())
        return false;
    mHolder.setThisThread();
    return true;
}

void NSLock::unlock()
{
    if (!mHolder.isThisThread())
        misused("a lock is given back by a thread that does not hold it");
    mHolder.clear();
    mMutex.unlock();
}

const NSClass& NSRecursiveLock::classObject()
{
    static const NSClass& type =
        NSClass::define("NSRecursiveLock", &NSObject::classObject(), kRecursiveLockMethods);
    return type;
}

void NSRecursiveLock::lock()
{
    if (!mHolder.isThisThread()) {
        mMutex.lock();
        mHolder.setThisThread();
    }
    ++mDepth;
}

bool NSRecursiveLock::tryLock()
{
    if (!mHolder.isThisThread()) {
        if (!mMutex.try_lock())
            return false;
        mHolder.setThisThread();
    }
    ++mDepth;
    return true;
}

void NSRecursiveLock::unlock()
{
    if (!mHolder.isThisThread())
        misused("a recursive lock is given back by a thread that does not hold it");
    if (--mDepth > 0)
        return;
    mHolder.clear();
    mMutex.unlock();
}
