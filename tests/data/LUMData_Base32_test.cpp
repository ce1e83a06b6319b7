#include "LUMFoundation/LUMData_Base32.h"

#include "LUMFoundation/LUMData_Compression.h"
#include "tests/data/data_text.h"
#include "tests/fixture.h"

namespace {

class LUMData_Base32Test : public ObjectTest { };

TEST_F(LUMData_Base32Test, GivesBackDataOfAnyLength)
{
    auto data = dataOf("00 01 02 03 04 05 06 07 08 09 0a 0b");
    EXPECT_EQ(hex(LUMData_Base32::wholeData(LUMData_Compression::base32String(data))),
        "00 01 02 03 04 05 06 07 08 09 0a 0b");
    EXPECT_EQ(hex(LUMData_Base32::wholeData("nbswy3dp")), "68 65 6c 6c 6f");
}

TEST_F(LUMData_Base32Test, GivesEmptyDataForTheEmptyText)
{
    auto data = LUMData_Base32::wholeData("");
    ASSERT_TRUE(data);
    EXPECT_EQ(data->length(), 0u);
}

TEST_F(LUMData_Base32Test, IsNullForWhatTheEncoderNeverWrites)
{
    EXPECT_EQ(hex(LUMData_Base32::wholeData("M{AAAAAA")), "null");
    EXPECT_EQ(hex(LUMData_Base32::wholeData("MY======")), "null");
    EXPECT_EQ(hex(LUMData_Base32::wholeData("MB")), "null");
    EXPECT_EQ(hex(LUMData_Base32::wholeData("A")), "null");
}

TEST_F(LUMData_Base32Test, IsNullForNull)
{
    EXPECT_EQ(hex(LUMData_Base32::wholeData(nullptr)), "null");
}

}
