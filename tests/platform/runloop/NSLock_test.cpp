#include "LUMPlatform/NSLock.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"

#include <thread>
#include <vector>

namespace {

template<typename Call> void onAnotherThread(Call call)
{
    std::thread(call).join();
}

bool isFree(const NSRef<NSLock>& lock)
{
    bool taken = false;
    onAnotherThread([&] {
        taken = lock->tryLock();
        if (taken)
            lock->unlock();
    });
    return taken;
}

bool isFree(const NSRef<NSRecursiveLock>& lock)
{
    bool taken = false;
    onAnotherThread([&] {
        taken = lock->tryLock();
        if (taken)
            lock->unlock();
    });
    return taken;
}

/// Adds up from many threads at once under a lock.
template<typename Lock> int sumUnder(const NSRef<Lock>& lock)
{
    int sum = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 1000; ++n) {
                std::lock_guard guard(*lock);
                ++sum;
            }
        });
    for (auto& thread : threads)
        thread.join();
    return sum;
}

struct NSLockTest : ObjectTest {
    NSRef<NSLock> lock = NSMake<NSLock>();
};

TEST_F(NSLockTest, KeepsOtherThreadsOut)
{
    lock->lock();
    EXPECT_FALSE(isFree(lock));
    lock->unlock();
    EXPECT_TRUE(isFree(lock));
}

TEST_F(NSLockTest, LetsOneThreadInAtATime)
{
    EXPECT_EQ(sumUnder(lock), 4000);
}

TEST_F(NSLockTest, RaisesWhenItsHolderTakesItAgain)
{
    lock->lock();
    EXPECT_THROW(lock->lock(), NSException);
    lock->unlock();
    EXPECT_TRUE(isFree(lock));
}

TEST_F(NSLockTest, IsNotTakenAgainByTryLock)
{
    EXPECT_TRUE(lock->tryLock());
    EXPECT_FALSE(lock->tryLock());
    lock->unlock();
    EXPECT_TRUE(isFree(lock));
}

TEST_F(NSLockTest, RaisesWhenAFreeLockIsGivenBack)
{
    EXPECT_THROW(lock->unlock(), NSException);
    lock->lock();
    lock->unlock();
    EXPECT_THROW(lock->unlock(), NSException);
    EXPECT_TRUE(isFree(lock));
}

TEST_F(NSLockTest, RaisesWhenAnotherThreadGivesItBack)
{
    lock->lock();
    onAnotherThread([&] { EXPECT_THROW(lock->unlock(), NSException); });
    EXPECT_FALSE(isFree(lock));
    lock->unlock();
}

TEST_F(NSLockTest, IsLockedByMessages)
{
    NSSend(lock, NSSelector("lock"));
    EXPECT_FALSE(NSSend<bool>(lock, NSSelector("tryLock")));
    NSSend(lock, NSSelector("unlock"));
    EXPECT_TRUE(isFree(lock));
}

TEST_F(NSLockTest, ConformsToLocking)
{
    EXPECT_TRUE(NSCast<NSLocking>(NSId(lock)));
    EXPECT_TRUE(NSCast<NSLocking>(NSId(NSMake<NSRecursiveLock>())));
}

struct NSRecursiveLockTest : ObjectTest {
    NSRef<NSRecursiveLock> lock = NSMake<NSRecursiveLock>();
};

TEST_F(NSRecursiveLockTest, IsFreeOnceGivenBackAsOftenAsTaken)
{
    lock->lock();
    EXPECT_TRUE(lock->tryLock());
    lock->unlock();
    EXPECT_FALSE(isFree(lock));
    lock->unlock();
    EXPECT_TRUE(isFree(lock));
}

TEST_F(NSRecursiveLockTest, LetsOneThreadInAtATime)
{
    EXPECT_EQ(sumUnder(lock), 4000);
}

TEST_F(NSRecursiveLockTest, RaisesWhenGivenBackTooOften)
{
    lock->lock();
    lock->unlock();
    EXPECT_THROW(lock->unlock(), NSException);
    EXPECT_TRUE(isFree(lock));
}

TEST_F(NSRecursiveLockTest, RaisesWhenAnotherThreadGivesItBack)
{
    lock->lock();
    onAnotherThread([&] { EXPECT_THROW(lock->unlock(), NSException); });
    EXPECT_FALSE(isFree(lock));
    lock->unlock();
}

}
