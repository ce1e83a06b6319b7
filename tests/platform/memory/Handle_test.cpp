#include "LUMPlatform/Handle.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(HandleTest, HoldsACopyOfTheBytes)
{
    char bytes[] = "abc";
    Handle handle = nullptr;
    EXPECT_EQ(PtrToHand(bytes, &handle, 3), 0);
    bytes[0] = 'x';
    EXPECT_EQ(std::string(*handle, 3), "abc");
    EXPECT_EQ(GetHandleSize(handle), 3);
    DisposeHandle(handle);
}

TEST(HandleTest, MayBeEmpty)
{
    Handle handle = nullptr;
    EXPECT_EQ(PtrToHand(nullptr, &handle, 0), 0);
    EXPECT_NE(*handle, nullptr);
    EXPECT_EQ(GetHandleSize(handle), 0);
    DisposeHandle(handle);
}

TEST(HandleTest, KeepsItsState)
{
    Handle handle = NewHandle(1);
    EXPECT_EQ(HGetState(handle), 0);
    HLock(handle);
    HLock(handle);
    EXPECT_EQ(HGetState(handle), kHandleLockedMask);
    HSetState(handle, 0x40);
    HLock(handle);
    EXPECT_EQ(HGetState(handle), static_cast<std::int8_t>(0xC0));
    DisposeHandle(handle);
}

TEST(HandleTest, NullIsNoBlock)
{
    EXPECT_EQ(GetHandleSize(nullptr), 0);
    EXPECT_EQ(HGetState(nullptr), nilHandleErr);
    HLock(nullptr);
    HSetState(nullptr, 0);
    DisposeHandle(nullptr);
}

TEST(HandleTest, RefusesImpossibleSizes)
{
    EXPECT_EQ(NewHandle(-1), nullptr);
    Handle handle = nullptr;
    EXPECT_EQ(PtrToHand("a", &handle, -1), -50);
    EXPECT_EQ(PtrToHand(nullptr, &handle, 1), -50);
    EXPECT_EQ(PtrToHand("a", nullptr, 1), -50);
    EXPECT_EQ(PtrToHand("a", &handle, std::numeric_limits<NSInteger>::max()), memFullErr);
    EXPECT_EQ(handle, nullptr);
}

}
