#include "LUMFoundation/LUMIncomingFolderWatcher.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "tests/source_folder.h"
#include "tests/watching/watching_fixture.h"

#include <algorithm>

namespace lum {

/// Writes down the files that are posted.
class IncomingFiles : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"incomingFile:", &IncomingFiles::incomingFile>()
        };
        static const NSClass& type = NSClass::define("IncomingFiles", &NSObject::classObject(), kMethods);
        return type;
    }

    void incomingFile(const NSRef<NSNotification>& notification)
    {
        EXPECT_TRUE(NSThread::isMainThread());
        const auto info = notification->userInfo();
        EXPECT_EQ(info->count(), 2U);
        const auto completed = info->objectForKey<NSNumber>("completed");
        EXPECT_TRUE(completed->isBool());
        posted.push_back((completed->boolValue() ? "complete " : "partial ")
            + info->objectForKey<NSString>("file")->utf8());
        lastSender = notification->object().get();
        if (whenPosted)
            whenPosted();
    }
    /// What has been posted, in alphabetical order.
    std::vector<std::string> take()
    {
        std::sort(posted.begin(), posted.end());
        return std::exchange(posted, {});
    }

    std::vector<std::string> posted;
    NSObject* lastSender = nullptr;
    std::function<void()> whenPosted;

protected:
    IncomingFiles() = default;
    ~IncomingFiles() override = default;
};

class LUMIncomingFolderWatcherTest : public WatchingTest {
protected:
    using Files = std::vector<std::string>;

    void SetUp() override
    {
        NSNotificationCenter::defaultCenter()->addObserver(
            files, NSSelector("incomingFile:"), LUMIncomingFileNotification, nullptr);
    }
    void TearDown() override
    {
        files = nullptr;
        WatchingTest::TearDown();
    }

    NSRef<LUMIncomingFolderWatcher> watch(const std::string& path) const
    {
        return LUMIncomingFolderWatcher::initWithFolder(path, "complete", "partial");
    }
    /// Serves the main queue until a file has been posted that many times.
    bool isPosted(const std::string& file, long times = 1) const
    {
        return serveUntil(
            [&] { return std::count(files->posted.begin(), files->posted.end(), file) >= times; });
    }

    TemporaryFolder folder;
    const std::string drop = folder / "drop";
    NSRef<IncomingFiles> files = NSMake<IncomingFiles>();
};

TEST_F(LUMIncomingFolderWatcherTest, HasItsName)
{
    EXPECT_EQ(LUMIncomingFileNotification.text(), "LUMIncomingFileNotification");
}

TEST_F(LUMIncomingFolderWatcherTest, MakesTheFolderAndThoseAboveIt)
{
    const auto watcher = watch(folder / "a/b/c");
    EXPECT_TRUE(watcher);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "a/b/c"));
}

TEST_F(LUMIncomingFolderWatcherTest, TakesAFolderThatIsThere)
{
    std::filesystem::create_directory(drop);
    EXPECT_TRUE(watch(drop));
}

TEST_F(LUMIncomingFolderWatcherTest, IsNotMadeWhereAFileIs)
{
    writeFile(drop, "");
    EXPECT_FALSE(watch(drop));
}

TEST_F(LUMIncomingFolderWatcherTest, IsNotMadeBelowAFile)
{
    writeFile(folder / "file", "");
    EXPECT_FALSE(watch(folder / "file/drop"));
}

TEST_F(LUMIncomingFolderWatcherTest, StandardisesThePathThatItMakes)
{
    const auto watcher = watch(folder / "x/../y/.//z");
    ASSERT_TRUE(watcher);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "y/z"));
    EXPECT_FALSE(std::filesystem::exists(folder / "x"));
}

TEST_F(LUMIncomingFolderWatcherTest, DeliberatelyScansThePathAsItWasGiven)
{
    const auto watcher = watch(folder / "x/../y");
    ASSERT_TRUE(watcher);
    writeFile(folder / "y/a.complete", "");
    watcher->scanFolder();
    EXPECT_EQ(files->take(), Files()) << "there is no x for the system to pass through";
    std::filesystem::create_directory(folder / "x");
    watcher->scanFolder();
    EXPECT_EQ(files->take(), Files { "complete " + (folder / "x/../y/a.complete") });
}

TEST_F(LUMIncomingFolderWatcherTest, DeliberatelyTakesTheFirstComponentOfAPathForGranted)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const auto single = watch("single");
    const auto missingFirst = watch("first/second");
    std::filesystem::create_directory("first");
    const auto relative = watch("first/second");
    std::filesystem::current_path(before);
    EXPECT_TRUE(single);
    EXPECT_FALSE(std::filesystem::exists(folder / "single"));
    EXPECT_FALSE(missingFirst);
    EXPECT_TRUE(relative);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "first/second"));
}

TEST_F(LUMIncomingFolderWatcherTest, TellsThePathAsItWasGiven)
{
    const std::string given = folder / "x/../drop/";
    EXPECT_EQ(watch(given)->path()->utf8(), given);
}

TEST_F(LUMIncomingFolderWatcherTest, PostsNothingBeforeTheNextTurnOfTheLoop)
{
    std::filesystem::create_directory(drop);
    writeFile(drop + "/b.complete", "");
    const auto watcher = watch(drop);
    EXPECT_EQ(files->take(), Files());
    EXPECT_TRUE(isPosted("complete " + drop + "/b.complete"));
}

TEST_F(LUMIncomingFolderWatcherTest, PostsTheFilesOfBothTypes)
{
    const auto watcher = watch(drop);
    drainMainQueue();
    files->take();
    for (const char* name :
        { "/a.partial", "/b.complete", "/c.txt", "/complete", "/d.COMPLETE", "/.complete" })
        writeFile(drop + name, "");
    watcher->scanFolder();
    EXPECT_EQ(
        files->take(), (Files { "complete " + drop + "/b.complete", "partial " + drop + "/a.partial" }));
    EXPECT_EQ(files->lastSender, watcher.get());
}

TEST_F(LUMIncomingFolderWatcherTest, PostsTheGivenPathJoinedWithTheName)
{
    const std::string given = folder / "./drop";
    const auto watcher = watch(given);
    writeFile(drop + "/b.complete", "");
    watcher->scanFolder();
    EXPECT_EQ(files->take(), Files { "complete " + given + "/b.complete" });
}

TEST_F(LUMIncomingFolderWatcherTest, PostsInTheOrderOfTheListing)
{
    const auto watcher = watch(drop);
    for (const char* name : { "/d.complete", "/a.partial", "/e.complete", "/c.partial", "/b.complete" })
        writeFile(drop + name, "");
    watcher->scanFolder();
    const auto names = NSFileManager::defaultManager()->contentsOfDirectoryAtPath(drop);
    std::vector<std::string> listed;
    for (const NSId& name : *names) {
        const auto text = NSCast<NSString>(name)->utf8();
        listed.push_back(text.substr(text.find('.') + 1) + " " + drop + "/" + text);
    }
    EXPECT_EQ(files->posted, listed);
}

TEST_F(LUMIncomingFolderWatcherTest, DeliberatelyPostsEveryFileAtEveryScan)
{
    const auto watcher = watch(drop);
    writeFile(drop + "/b.complete", "");
    watcher->scanFolder();
    watcher->scanFolder();
    EXPECT_EQ(files->take().size(), 2U);
}

TEST_F(LUMIncomingFolderWatcherTest, TakesEqualTypesForComplete)
{
    const auto watcher = LUMIncomingFolderWatcher::initWithFolder(drop, "x", "x");
    writeFile(drop + "/a.x", "");
    watcher->scanFolder();
    EXPECT_EQ(files->take(), Files { "complete " + drop + "/a.x" });
}

TEST_F(LUMIncomingFolderWatcherTest, FindsNamesWithoutAnExtensionByAnEmptyType)
{
    const auto watcher = LUMIncomingFolderWatcher::initWithFolder(drop, "", "partial");
    writeFile(drop + "/plain", "");
    watcher->scanFolder();
    EXPECT_EQ(files->take(), Files { "complete " + drop + "/plain" });
}

TEST_F(LUMIncomingFolderWatcherTest, FindsNothingByNull)
{
    const auto watcher = LUMIncomingFolderWatcher::initWithFolder(drop, nullptr, nullptr);
    writeFile(drop + "/plain", "");
    watcher->scanFolder();
    EXPECT_EQ(files->take(), Files());
    const auto nowhere = LUMIncomingFolderWatcher::initWithFolder(nullptr, "complete", "partial");
    ASSERT_TRUE(nowhere);
    nowhere->scanFolder();
    EXPECT_EQ(files->take(), Files());
}

TEST_F(LUMIncomingFolderWatcherTest, ScansWhenAFileIsDone)
{
    const auto watcher = watch(drop);
    writeFile(drop + "/b.complete", "");
    writeFile(drop + "/a.partial", "");
    ASSERT_TRUE(isPosted("partial " + drop + "/a.partial"));
    files->take();
    std::filesystem::rename(drop + "/a.partial", drop + "/a.complete");
    ASSERT_TRUE(isPosted("complete " + drop + "/a.complete"));
    EXPECT_GE(std::count(files->posted.begin(), files->posted.end(), "complete " + drop + "/b.complete"), 1);
}

TEST_F(LUMIncomingFolderWatcherTest, ScansWhenTheFoldersOwnAttributesChange)
{
    std::filesystem::create_directory(drop);
    writeFile(drop + "/b.complete", "");
    const auto watcher = watch(drop);
    drainMainQueue();
    EXPECT_EQ(files->take().size(), 1U);
    std::filesystem::permissions(drop, std::filesystem::perms::owner_all);
    EXPECT_TRUE(isPosted("complete " + drop + "/b.complete"));
}

TEST_F(LUMIncomingFolderWatcherTest, PostsNothingOnceTheFolderIsGone)
{
    const auto watcher = watch(drop);
    std::filesystem::remove(drop);
    watcher->scanFolder();
    EXPECT_EQ(files->take(), Files());
}

TEST_F(LUMIncomingFolderWatcherTest, QueuesTheScanOfAChange)
{
    const auto watcher = watch(drop);
    drainMainQueue();
    writeFile(drop + "/b.complete", "");
    files->take();
    watcher->watcherReceivedNotification(nullptr, "any name", "any path");
    EXPECT_EQ(files->take(), Files());
    drainMainQueue();
    EXPECT_GE(files->take().size(), 1U);
}

TEST_F(LUMIncomingFolderWatcherTest, LivesUntilItsFirstScan)
{
    std::filesystem::create_directory(drop);
    writeFile(drop + "/b.complete", "");
    static_cast<void>(watch(drop));
    drainMainQueue();
    EXPECT_EQ(files->take(), Files { "complete " + drop + "/b.complete" });
}

TEST_F(LUMIncomingFolderWatcherTest, ScansOnceWhenTheFolderCannotBeWatched)
{
    std::filesystem::create_directory(drop);
    writeFile(drop + "/b.complete", "");
    NSRef<LUMIncomingFolderWatcher> watcher;
    drainMainQueue(); // which opens its descriptor, if this is the first test to need it
    {
        const DescriptorLimit limit(0);
        watcher = watch(drop);
    }
    ASSERT_TRUE(watcher);
    drainMainQueue();
    EXPECT_EQ(files->take(), Files { "complete " + drop + "/b.complete" });
}

TEST_F(LUMIncomingFolderWatcherTest, MayEndInsideANotification)
{
    auto watcher = watch(drop);
    drainMainQueue();
    writeFile(drop + "/a.complete", "");
    writeFile(drop + "/b.complete", "");
    files->whenPosted = [&] { watcher = nullptr; };
    EXPECT_TRUE(isPosted("complete " + drop + "/a.complete"));
    EXPECT_FALSE(watcher);
}

/// No dynamic call makes a watcher, so the selector of its maker stands in the header alone.
TEST_F(LUMIncomingFolderWatcherTest, DeliberatelyIsMadeByASelectorWithASmallF)
{
    const std::string text = readFile(inSourceFolder("LUMFoundation/LUMIncomingFolderWatcher.h"));
    EXPECT_NE(text.find("Selector: initWithFolder:completedfileType:incompleteFileType:"), std::string::npos);
}

TEST_F(LUMIncomingFolderWatcherTest, AnswersItsSelectors)
{
    const auto watcher = watch(drop);
    EXPECT_TRUE(NSSend<bool>(watcher, NSSelector("createFolderIfNeeded")));
    EXPECT_EQ(NSSend<NSRef<NSString>>(watcher, NSSelector("path"))->utf8(), drop);
    EXPECT_TRUE(watcher->respondsToSelector(NSSelector("scanFolder")));
    EXPECT_TRUE(watcher->respondsToSelector(NSSelector("watcher:receivedNotification:forPath:")));
}

TEST_F(LUMIncomingFolderWatcherTest, MayEndInsideANotificationOfAScanThatWasAskedFor)
{
    auto watcher = watch(drop);
    drainMainQueue();
    writeFile(drop + "/a.complete", "");
    writeFile(drop + "/b.complete", "");
    files->whenPosted = [&] { watcher = nullptr; };
    watcher->scanFolder();
    EXPECT_EQ(files->take().size(), 2u);
}

}
