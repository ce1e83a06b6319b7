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

template<typename Lock> bool isFree(const NSRef<Lock>& lock)
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

/// What both kinds of lock do.
template<typename Lock> struct LocksTest : ObjectTest {
    NSRef<Lock> lock = NSMake<Lock>();
};

struct LockNames {
    template<typename Lock> static std::string GetName(int)
    {
        return std::is_same_v<Lock, NSLock> ? "NSLock" : "NSRecursiveLock";
    }
};
using Locks = testing::Types<NSLock, NSRecursiveLock>;
TYPED_TEST_SUITE(LocksTest, Locks, LockNames);

TYPED_TEST(LocksTest, KeepOtherThreadsOut)
{
    this->lock->lock();
    EXPECT_FALSE(isFree(this->lock));
    this->lock->unlock();
    EXPECT_TRUE(isFree(this->lock));
}

TYPED_TEST(LocksTest, LetOneThreadInAtATime)
{
    EXPECT_EQ(sumUnder(this->lock), 4000);
}

TYPED_TEST(LocksTest, RaiseWhenAFreeLockIsGivenBack)
{
    EXPECT_THROW(this->lock->unlock(), NSException);
    this->lock->lock();
    this->lock->unlock();
    EXPECT_THROW(this->lock->unlock(), NSException);
    EXPECT_TRUE(isFree(this->lock));
}

TYPED_TEST(LocksTest, RaiseWhenAnotherThreadGivesThemBack)
{
    this->lock->lock();
    onAnotherThread([this] { EXPECT_THROW(this->lock->unlock(), NSException); });
    EXPECT_FALSE(isFree(this->lock));
    this->lock->unlock();
}

TYPED_TEST(LocksTest, AreTakenByMessages)
{
    NSSend(this->lock, NSSelector("lock"));
    EXPECT_FALSE(isFree(this->lock));
    NSSend(this->lock, NSSelector("unlock"));
    EXPECT_TRUE(isFree(this->lock));
    EXPECT_TRUE(NSSend<bool>(this->lock, NSSelector("tryLock")));
    EXPECT_FALSE(isFree(this->lock));
    this->lock->unlock();
}

TYPED_TEST(LocksTest, ConformToLocking)
{
    EXPECT_TRUE(NSCast<NSLocking>(NSId(this->lock)));
}

struct NSLockTest : ObjectTest {
    NSRef<NSLock> lock = NSMake<NSLock>();
};

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

}
