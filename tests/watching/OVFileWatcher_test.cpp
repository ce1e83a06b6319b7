#include "LUMFoundation/OVFileWatcher.h"

#include <gtest/gtest.h>

namespace {

struct Name {
    const char* test;
    const NSStringConstant& constant;
    const char* text;
};

class OVFileWatcherNamesTest : public testing::TestWithParam<Name> { };

TEST_P(OVFileWatcherNamesTest, DeliberatelyHaveTextsThatWordTheChangeDifferently)
{
    EXPECT_EQ(GetParam().constant.text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, OVFileWatcherNamesTest,
    testing::Values(Name { "Rename", OVFileWatcherRenameNotification, "OVKQueueFileRenamedNotification" },
        Name { "Write", OVFileWatcherWriteNotification, "OVKQueueFileWrittenToNotification" },
        Name { "Delete", OVFileWatcherDeleteNotification, "OVKQueueFileDeletedNotification" },
        Name { "AttributeChange", OVFileWatcherAttributeChangeNotification,
            "OVKQueueFileAttributesChangedNotification" },
        Name {
            "SizeIncrease", OVFileWatcherSizeIncreaseNotification, "OVKQueueFileSizeIncreasedNotification" },
        Name { "LinkCountChange", OVFileWatcherLinkCountChangeNotification,
            "OVKQueueFileLinkCountChangedNotification" },
        Name { "AccessRevocation", OVFileWatcherAccessRevocationNotification,
            "OVKQueueFileAccessRevocationNotification" }),
    [](const auto& row) { return row.param.test; });

}
