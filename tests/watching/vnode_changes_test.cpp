#include "tests/watching/vnode_changes_fixture.h"

namespace lum {

TEST_F(VnodeChangesOfFileTest, ReportsAWriteInPlace)
{
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE");
}

TEST_F(VnodeChangesOfFileTest, ReportsGrowthBesideTheWrite)
{
    now->size = 101;
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE EXTEND");
}

TEST_F(VnodeChangesOfFileTest, ReportsGrowthOnce)
{
    now->size = 101;
    event(inotify::kModify).report();
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE");
}

TEST_F(VnodeChangesOfFileTest, ReportsNoGrowthWhenTheFileShrinks)
{
    now->size = 99;
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE");
}

TEST_F(VnodeChangesOfFileTest, MeasuresGrowthFromTheSizeAfterShrinking)
{
    now->size = 10;
    event(inotify::kModify).report();
    now->size = 20;
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE EXTEND");
}

TEST_F(VnodeChangesOfFileTest, ReportsAttributes)
{
    now->mode = 0100600;
    EXPECT_EQ(event(inotify::kAttrib).report(), "ATTRIB");
}

TEST_F(VnodeChangesOfFileTest, ReportsAttributesThatAreNotRemembered)
{
    EXPECT_EQ(event(inotify::kAttrib).report(), "ATTRIB");
}

TEST_F(VnodeChangesOfFileTest, MergesTheEventsOfOneRead)
{
    EXPECT_EQ(
        event(inotify::kModify).event(inotify::kAttrib).event(inotify::kModify).report(), "WRITE ATTRIB");
}

TEST_F(VnodeChangesOfFileTest, ReportsOnlyALinkWhenAHardLinkIsAdded)
{
    now->links = 2;
    EXPECT_EQ(event(inotify::kAttrib).report(), "LINK");
    EXPECT_FALSE(last.mustSettle);
}

TEST_F(VnodeChangesOfFileTest, ReportsOtherAttributesBesideALink)
{
    now->links = 2;
    now->mode = 0100600;
    EXPECT_EQ(event(inotify::kAttrib).report(), "ATTRIB LINK");
}

TEST_F(VnodeChangesOfFileTest, ReportsATouchBesideALink)
{
    now->links = 2;
    now->modified = 2000;
    EXPECT_EQ(event(inotify::kAttrib).report(), "ATTRIB LINK");
}

TEST_F(VnodeChangesOfFileTest, TakesATimeChangedByAWriteWithoutALookForNoTouch)
{
    const auto there = std::exchange(now, std::nullopt);
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE");
    now = there;
    now->modified = 2000;
    now->links = 2;
    EXPECT_EQ(event(inotify::kAttrib).report(), "LINK");
    now->modified = 3000;
    now->links = 3;
    EXPECT_EQ(event(inotify::kAttrib).report(), "ATTRIB LINK");
}

TEST_F(VnodeChangesOfFileTest, CountsALinkThatAWriteHasAlreadyShown)
{
    now->links = 2;
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE");
    EXPECT_EQ(event(inotify::kAttrib).report(), "LINK");
}

TEST_F(VnodeChangesOfFileTest, LooksAgainAfterALostLinkBecauseTheNameGoesLast)
{
    state.status.links = 2;
    EXPECT_EQ(event(inotify::kAttrib).report(), "LINK");
    ASSERT_TRUE(last.mustSettle);
    now.reset();
    raw.isNameInDoubt = true;
    EXPECT_EQ(report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, ReportsNothingMoreWhenTheLostLinkWasAnother)
{
    state.status.links = 2;
    EXPECT_EQ(event(inotify::kAttrib).report(), "LINK");
    raw.isNameInDoubt = true;
    EXPECT_EQ(report(), "");
}

TEST_F(VnodeChangesOfFileTest, ReportsADeletionOnceForTheThreeEventsOfIt)
{
    now.reset();
    EXPECT_EQ(
        event(inotify::kAttrib).event(inotify::kDeleteSelf).event(inotify::kIgnored).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, ReportsADeletionOnceAcrossReads)
{
    now.reset();
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
    EXPECT_EQ(event(inotify::kDeleteSelf).report(), "");
    EXPECT_EQ(event(inotify::kIgnored).report(), "");
}

TEST_F(VnodeChangesOfFileTest, ReportsADeletionWhileSomebodyHoldsTheFileOpen)
{
    now.reset();
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, TakesAFileWithoutLinksForDeletedThoughItsNameIsStillThere)
{
    now->links = 0;
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, BelievesAFileSystemThatNeverCountsLinks)
{
    state.status.links = 0;
    now->links = 0;
    EXPECT_EQ(event(inotify::kAttrib).report(), "ATTRIB");
}

TEST_F(VnodeChangesOfFileTest, ReportsADeletionWhenAnotherFileTakesThePath)
{
    now->inode = 43;
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, TellsFilesOfOneNumberOnTwoVolumesApart)
{
    now->device = 8;
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, ReportsASecondDeletionOfAFileWhosePathCameBack)
{
    const auto there = std::exchange(now, std::nullopt);
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
    now = there;
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE");
    now.reset();
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, TakesAnEndedWatchForADeletion)
{
    EXPECT_EQ(event(inotify::kIgnored).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, ReportsWritesOfADeletedFile)
{
    now.reset();
    event(inotify::kAttrib).report();
    EXPECT_EQ(event(inotify::kModify).report(), "WRITE");
}

TEST_F(VnodeChangesOfFileTest, ReportsARename)
{
    now.reset();
    EXPECT_EQ(event(inotify::kMoveSelf).report(), "RENAME");
}

TEST_F(VnodeChangesOfFileTest, TakesAMissingPathForNoDeletionAfterARename)
{
    now.reset();
    event(inotify::kMoveSelf).report();
    EXPECT_EQ(event(inotify::kAttrib).report(), "ATTRIB");
}

TEST_F(VnodeChangesOfFileTest, TakesAMissingPathForNoDeletionBesideARename)
{
    now.reset();
    EXPECT_EQ(event(inotify::kMoveSelf).event(inotify::kAttrib).report(), "RENAME ATTRIB");
}

TEST_F(VnodeChangesOfFileTest, ReportsNeitherGrowthNorLinksAfterARename)
{
    now = status(kFileMode);
    now->inode = 43;
    now->size = 1000;
    now->links = 5;
    event(inotify::kMoveSelf).report();
    EXPECT_EQ(event(inotify::kModify).event(inotify::kAttrib).report(), "WRITE ATTRIB");
}

TEST_F(VnodeChangesOfFileTest, ReportsTheDeletionOfARenamedFile)
{
    now.reset();
    event(inotify::kMoveSelf).report();
    EXPECT_EQ(
        event(inotify::kAttrib).event(inotify::kDeleteSelf).event(inotify::kIgnored).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, TrustsThePathAgainAfterARenameBack)
{
    now.reset();
    event(inotify::kMoveSelf).report();
    now = status(kFileMode);
    EXPECT_EQ(event(inotify::kMoveSelf).report(), "RENAME");
    now.reset();
    EXPECT_EQ(event(inotify::kAttrib).report(), "DELETE");
}

TEST_F(VnodeChangesOfFileTest, ReportsARevocationWhenTheVolumeGoes)
{
    now.reset();
    EXPECT_EQ(event(inotify::kUnmount).event(inotify::kIgnored).report(), "REVOKE");
}

TEST_F(VnodeChangesOfFileTest, ReportsWhatHappenedBeforeTheVolumeWent)
{
    now.reset();
    EXPECT_EQ(
        event(inotify::kModify).event(inotify::kUnmount).event(inotify::kIgnored).report(), "WRITE REVOKE");
}

}
