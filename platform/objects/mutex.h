#pragma once

#include <mutex>

// Clang proves with these that guarded data is touched under its lock; other compilers ignore them.
#if defined(__clang__)
#define NS_THREAD_ANNOTATION(x) __attribute__((x))
#else
#define NS_THREAD_ANNOTATION(x)
#endif

#define NS_CAPABILITY(name) NS_THREAD_ANNOTATION(capability(name))
#define NS_SCOPED_CAPABILITY NS_THREAD_ANNOTATION(scoped_lockable)
#define NS_GUARDED_BY(lock) NS_THREAD_ANNOTATION(guarded_by(lock))
#define NS_ACQUIRE(...) NS_THREAD_ANNOTATION(acquire_capability(__VA_ARGS__))
#define NS_RELEASE(...) NS_THREAD_ANNOTATION(release_capability(__VA_ARGS__))
#define NS_REQUIRES(...) NS_THREAD_ANNOTATION(requires_capability(__VA_ARGS__))
#define NS_EXCLUDES(...) NS_THREAD_ANNOTATION(locks_excluded(__VA_ARGS__))
#define NS_NO_THREAD_SAFETY_ANALYSIS NS_THREAD_ANNOTATION(no_thread_safety_analysis)

namespace platform {

/// A std::mutex that the compiler can reason about.
class NS_CAPABILITY("mutex") Mutex {
public:
    void lock() NS_ACQUIRE() { mMutex.lock(); }
    void unlock() NS_RELEASE() { mMutex.unlock(); }

private:
    std::mutex mMutex;
};

/// Holds a lock for a scope.
class NS_SCOPED_CAPABILITY MutexLock {
public:
    explicit MutexLock(Mutex& mutex) NS_ACQUIRE(mutex) : mMutex(mutex) { mMutex.lock(); }
    ~MutexLock() NS_RELEASE() { mMutex.unlock(); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

private:
    Mutex& mMutex;
};

}
