#include "tests/watching/vnode_changes_fixture.h"

namespace lum {

class VnodeChangesOfFolderTest : public VnodeChangesTest {
protected:
    void SetUp() override { watch(kFolderMode); }
};

TEST_F(VnodeChangesOfFolderTest, ReportsAWriteForANewFile)
{
    EXPECT_EQ(event(inotify::kCreate, "a").report(), "WRITE");
}

TEST_F(VnodeChangesOfFolderTest, ReportsAWriteForARemovedFile)
{
    EXPECT_EQ(event(inotify::kDelete, "a").report(), "WRITE");
}

TEST_F(VnodeChangesOfFolderTest, ReportsOneWriteForARenameInside)
{
    EXPECT_EQ(event(inotify::kMovedFrom, "a", 5).event(inotify::kMovedTo, "b", 5).report(), "WRITE");
}

TEST_F(VnodeChangesOfFolderTest, ReportsNothingForWhatHappensInsideAChild)
{
    EXPECT_EQ(event(inotify::kModify, "a").event(inotify::kAttrib, "a").report(), "");
}

TEST_F(VnodeChangesOfFolderTest, ReportsALinkForANewSubfolder)
{
    EXPECT_EQ(event(inotify::kCreate | inotify::kIsFolder, "a").report(), "WRITE LINK");
}

TEST_F(VnodeChangesOfFolderTest, ReportsALinkForARemovedSubfolder)
{
    EXPECT_EQ(event(inotify::kDelete | inotify::kIsFolder, "a").report(), "WRITE LINK");
}

TEST_F(VnodeChangesOfFolderTest, ReportsALinkForASubfolderThatMovesOut)
{
    EXPECT_EQ(event(inotify::kMovedFrom | inotify::kIsFolder, "a", 5).report(), "WRITE LINK");
}

TEST_F(VnodeChangesOfFolderTest, ReportsALinkForASubfolderThatMovesIn)
{
    EXPECT_EQ(event(inotify::kMovedTo | inotify::kIsFolder, "a", 5).report(), "WRITE LINK");
}

TEST_F(VnodeChangesOfFolderTest, ReportsNoLinkForASubfolderThatIsRenamedInside)
{
    event(inotify::kMovedFrom | inotify::kIsFolder, "a", 5);
    event(inotify::kMovedTo | inotify::kIsFolder, "b", 5);
    EXPECT_EQ(report(), "WRITE");
}

TEST_F(VnodeChangesOfFolderTest, ReportsALinkWhenOneSubfolderMovesOutAndAnotherIn)
{
    event(inotify::kMovedFrom | inotify::kIsFolder, "a", 5);
    event(inotify::kMovedTo | inotify::kIsFolder, "b", 6);
    EXPECT_EQ(report(), "WRITE LINK");
}

TEST_F(VnodeChangesOfFolderTest, ReportsNoGrowthOfAFolder)
{
    now->size = 1000;
    EXPECT_EQ(event(inotify::kCreate, "a").report(), "WRITE");
}

TEST_F(VnodeChangesOfFolderTest, ReportsAttributesBesideANewSubfolder)
{
    now->links = 3;
    event(inotify::kCreate | inotify::kIsFolder, "a").event(inotify::kAttrib | inotify::kIsFolder);
    EXPECT_EQ(report(), "WRITE ATTRIB LINK");
}

TEST_F(VnodeChangesOfFolderTest, ReportsARename)
{
    now.reset();
    EXPECT_EQ(event(inotify::kMoveSelf).report(), "RENAME");
}

TEST_F(VnodeChangesOfFolderTest, ReportsTheRemovalOfAFolderThatHeldAFile)
{
    now.reset();
    event(inotify::kDelete, "a").event(inotify::kDeleteSelf).event(inotify::kIgnored);
    EXPECT_EQ(report(), "WRITE DELETE");
}

TEST_F(VnodeChangesOfFolderTest, ReportsARemovalThatOnlyTheFolderAboveTells)
{
    now.reset();
    raw.isNameInDoubt = true;
    EXPECT_EQ(report(), "DELETE");
}

TEST_F(VnodeChangesOfFolderTest, ReportsNothingWhenTheFolderAboveTellsOfAnotherOfItsName)
{
    raw.isNameInDoubt = true;
    EXPECT_EQ(report(), "");
}

}
