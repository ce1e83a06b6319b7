#include "LUMPlatform/NSWorkspace.h"

#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

class NSWorkspaceTest : public ObjectTest { };

TEST_F(NSWorkspaceTest, IsOneForTheProcess)
{
    EXPECT_TRUE(NSWorkspace::sharedWorkspace());
    EXPECT_TRUE(NSWorkspace::sharedWorkspace() == NSWorkspace::sharedWorkspace());
}

TEST_F(NSWorkspaceTest, HasANotificationCenterOfItsOwn)
{
    const auto center = NSWorkspace::sharedWorkspace()->notificationCenter();
    EXPECT_TRUE(center);
    EXPECT_TRUE(NSWorkspace::sharedWorkspace()->notificationCenter() == center);
    EXPECT_FALSE(NSNotificationCenter::defaultCenter() == center);
}

TEST_F(NSWorkspaceTest, TakesHintsOfChanges)
{
    NSWorkspace::sharedWorkspace()->noteFileSystemChanged("/tmp");
    NSWorkspace::sharedWorkspace()->noteFileSystemChanged(nullptr);
}

}
