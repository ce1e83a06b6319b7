#include "LUMFoundation/LUMData_Handle.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

#include <string>

namespace {

class LUMData_HandleTest : public ObjectTest { };

TEST_F(LUMData_HandleTest, CopiesBothWays)
{
    auto data = NSData::dataWithBytes("a\0b", 3);
    Handle handle = LUMData_Handle::newHandleWithContents(data);
    EXPECT_EQ(std::string(*handle, 3), std::string("a\0b", 3));
    auto again = LUMData_Handle::lumDataWithContentsOfHandle(handle);
    **handle = 'x';
    EXPECT_THAT(again, Equals(data));
    DisposeHandle(handle);
}

TEST_F(LUMData_HandleTest, AHandleOfNoBytesGivesEmptyData)
{
    Handle handle = LUMData_Handle::newHandleWithContents(NSData::data());
    EXPECT_EQ(GetHandleSize(handle), 0);
    EXPECT_THAT(LUMData_Handle::lumDataWithContentsOfHandle(handle), Equals(NSData::data()));
    DisposeHandle(handle);
}

TEST_F(LUMData_HandleTest, LeavesTheStateAsItWas)
{
    Handle handle = NewHandle(1);
    EXPECT_TRUE(LUMData_Handle::lumDataWithContentsOfHandle(handle));
    EXPECT_EQ(HGetState(handle), 0);
    HLock(handle);
    EXPECT_TRUE(LUMData_Handle::lumDataWithContentsOfHandle(handle));
    EXPECT_EQ(HGetState(handle), kHandleLockedMask);
    DisposeHandle(handle);
}

TEST_F(LUMData_HandleTest, NullGivesNull)
{
    EXPECT_EQ(LUMData_Handle::newHandleWithContents(nullptr), nullptr);
    EXPECT_FALSE(LUMData_Handle::lumDataWithContentsOfHandle(nullptr));
}

TEST_F(LUMData_HandleTest, IsADynamicCall)
{
    auto handle = NSSend<Handle>(NSData::dataWithBytes("a", 1), NSSelector("newHandleWithContents"));
    EXPECT_EQ(**handle, 'a');
    DisposeHandle(handle);
}

}
