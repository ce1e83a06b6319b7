#include "tests/watching/vnode_changes_fixture.h"

namespace lum {

class VnodeChangesAfterLossTest : public VnodeChangesOfFileTest { };

TEST_F(VnodeChangesAfterLossTest, ReportsNothingWhenNothingDiffers)
{
    EXPECT_EQ(afterLoss(WatchFate::Alive), "");
}

TEST_F(VnodeChangesAfterLossTest, ReportsEachDifferenceUnderItsName)
{
    now->modified = 2000;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "WRITE");
    now->size = 101;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "WRITE EXTEND");
    now->size = 50;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "WRITE");
    now->mode = 0100600;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "ATTRIB");
    now->user = 1;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "ATTRIB");
    now->group = 1;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "ATTRIB");
    now->links = 2;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "LINK");
    now->changed = 3000;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "ATTRIB");
    EXPECT_EQ(afterLoss(WatchFate::Alive), "");
}

TEST_F(VnodeChangesAfterLossTest, ReportsWhatTheFileTimesAreTooCoarseToExclude)
{
    state.status.isRecent = true;
    EXPECT_EQ(afterLoss(WatchFate::Alive), "WRITE ATTRIB");
}

TEST_F(VnodeChangesAfterLossTest, ReportsADeletionWhenTheWatchIsGone)
{
    now.reset();
    EXPECT_EQ(afterLoss(WatchFate::Dead), "DELETE");
    EXPECT_EQ(afterLoss(WatchFate::Dead), "");
}

TEST_F(VnodeChangesAfterLossTest, ReportsADeletionThoughANewFileHasTheSameNumber)
{
    EXPECT_EQ(afterLoss(WatchFate::Dead), "DELETE");
}

TEST_F(VnodeChangesAfterLossTest, ReportsARenameAndADeletionWhenOnlyThePathIsGone)
{
    now.reset();
    EXPECT_EQ(afterLoss(WatchFate::Alive), "RENAME WRITE DELETE ATTRIB");
}

TEST_F(VnodeChangesAfterLossTest, ReportsTheEndOfAFileThatHadOnlyMoved)
{
    now.reset();
    afterLoss(WatchFate::Alive);
    EXPECT_EQ(afterLoss(WatchFate::Dead), "DELETE");
}

TEST_F(VnodeChangesAfterLossTest, ReportsThatAnythingMayHaveHappenedToAFileOutOfSight)
{
    now.reset();
    event(inotify::kMoveSelf).report();
    EXPECT_EQ(afterLoss(WatchFate::Alive), "WRITE ATTRIB");
}

TEST_F(VnodeChangesAfterLossTest, ReportsADeletionOfAMissingPathWhenNothingIsKnownOfTheWatch)
{
    now.reset();
    EXPECT_EQ(afterLoss(WatchFate::Unknown), "DELETE");
}

TEST_F(VnodeChangesAfterLossTest, ReportsDifferencesWhenNothingIsKnownOfTheWatch)
{
    now->modified = 2000;
    EXPECT_EQ(afterLoss(WatchFate::Unknown), "WRITE");
}

TEST_F(VnodeChangesAfterLossTest, ReportsARevocationWhenTheVolumeIsGone)
{
    now.reset();
    EXPECT_EQ(afterLoss(WatchFate::Unmounted), "REVOKE");
}

}
