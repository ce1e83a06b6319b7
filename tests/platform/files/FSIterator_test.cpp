#include "LUMPlatform/FSIterator.h"

#include "platform/files/descriptor_pool.h"
#include "tests/platform/files/faulty_node_system.h"
#include "tests/platform/files/mounted_file_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <cerrno>
#include <map>
#include <set>

namespace fs = std::filesystem;

namespace {

class FSIteratorTest : public ReferenceTest {
protected:
    /// All entries by name; fails the test unless the walk ends as it should.
    static std::map<std::string, FSRef> entriesOf(const FSRef& folder)
    {
        std::map<std::string, FSRef> entries;
        FSIterator iterator;
        EXPECT_EQ(FSOpenIterator(folder, kFSIterateFlat, iterator), 0);
        FSRef item;
        std::string_view name;
        OSStatus status = 0;
        while ((status = FSGetCatalogInfoBulk(iterator, item, &name)) == 0)
            EXPECT_TRUE(entries.emplace(name, item).second) << name << " came twice";
        EXPECT_EQ(status, kFSNoMoreItems);
        return entries;
    }
};

TEST_F(FSIteratorTest, GivesAReferenceToEachEntry)
{
    file("f");
    file(".hidden");
    folder("a");
    fs::create_symlink("nowhere", at("alias"));
    const auto entries = entriesOf(refTo(mFolder.string()));
    ASSERT_EQ(entries.size(), 4u);
    for (const auto& [name, ref] : entries) {
        EXPECT_EQ(pathOf(ref), at(name));
        EXPECT_EQ(FSCompareFSRefs(ref, refTo(at(name))), 0);
    }
}

TEST_F(FSIteratorTest, GivesThemAllInALargeFolder)
{
    std::set<std::string> names;
    for (int i = 0; i < 3000; ++i) {
        const std::string name =
            "a name of some length, so that they come in several pieces " + std::to_string(i);
        names.insert(name);
        file(name, "");
    }
    std::set<std::string> found;
    for (const auto& [name, ref] : entriesOf(refTo(mFolder.string())))
        found.insert(name);
    EXPECT_EQ(found, names);
}

TEST_F(FSIteratorTest, OpensNoEntry)
{
    for (int i = 0; i < 50; ++i)
        file(std::to_string(i), "");
    const FSRef folder = refTo(mFolder.string());
    FSReleaseDescriptors();
    const auto entries = entriesOf(folder);
    EXPECT_EQ(platform::DescriptorPool::shared().held(), 1u) << "that of the folder";
    EXPECT_EQ(pathOf(entries.at("7")), at("7"));
    EXPECT_EQ(platform::DescriptorPool::shared().held(), 2u);
}

TEST_F(FSIteratorTest, EntriesAreFollowedFromThenOn)
{
    folder("a");
    folder("b");
    file("a/f");
    const FSRef entry = entriesOf(refTo(at("a"))).at("f");
    rename("a/f", "b/g");
    EXPECT_EQ(pathOf(entry), at("b/g"));
    rename("b", "c");
    EXPECT_EQ(pathOf(entry), at("c/g"));
}

TEST_F(FSIteratorTest, AFolderThatMovesMeanwhileGivesItsEntries)
{
    folder("a");
    file("a/f");
    FSIterator iterator;
    ASSERT_EQ(FSOpenIterator(refTo(at("a")), kFSIterateFlat, iterator), 0);
    rename("a", "b");
    FSRef item;
    ASSERT_EQ(FSGetCatalogInfoBulk(iterator, item), 0);
    EXPECT_EQ(pathOf(item), at("b/f"));
}

TEST_F(FSIteratorTest, EndsOnceAndForAll)
{
    FSIterator iterator;
    ASSERT_EQ(FSOpenIterator(refTo(folder("empty")), kFSIterateFlat, iterator), 0);
    FSRef item;
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), kFSNoMoreItems);
    file("empty/late");
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), kFSNoMoreItems);
    EXPECT_EQ(FSCloseIterator(iterator), 0);
    EXPECT_EQ(FSCloseIterator(iterator), -50);
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), -50);
}

TEST_F(FSIteratorTest, GivesTheOthersWhenOneCannotBeLookedAtAndTellsAtTheEnd)
{
    for (const std::string name : { "1", "2", "3" })
        file(name);
    FaultyNodeSystem system;
    FSIterator iterator;
    ASSERT_EQ(FSOpenIterator(refTo(mFolder.string()), kFSIterateFlat, iterator), 0);
    system.fail(FaultyNodeSystem::Attributes, EACCES, 1, false);
    FSRef item;
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), 0);
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), 0);
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), -5000);
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), -5000);
}

TEST_F(FSIteratorTest, IsNotOpenedForAnythingElse)
{
    FSIterator iterator;
    EXPECT_EQ(FSOpenIterator(refTo(file("f")), kFSIterateFlat, iterator), -120);
    EXPECT_EQ(FSOpenIterator(FSRef(), kFSIterateFlat, iterator), -43);
    EXPECT_EQ(FSOpenIterator(refTo(folder("a")), 1, iterator), -50);
    const FSRef gone = refTo(folder("b"));
    remove("b");
    EXPECT_EQ(FSOpenIterator(gone, kFSIterateFlat, iterator), -43);
}

TEST_F(FSIteratorTest, LeavesOutNamesThatNoTextCanTell)
{
    file("f");
    std::ofstream(at("\xFF\xFE")) << "x";
    EXPECT_EQ(entriesOf(refTo(mFolder.string())).size(), 1u);
}

TEST_F(FSIteratorTest, GivesBackItsDescriptor)
{
    FSReleaseDescriptors();
    const std::size_t before = openDescriptors();
    {
        FSIterator iterator;
        FSRef item;
        ASSERT_EQ(FSOpenIterator(refTo(mFolder.string()), kFSIterateFlat, iterator), 0);
        FSIterator moved = std::move(iterator);
        EXPECT_EQ(FSGetCatalogInfoBulk(iterator, item), -50);
    }
    FSReleaseDescriptors();
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(FSIteratorTest, TellsEntriesOfAnotherVolumeApart)
{
    const auto system = MountedFileSystem::find("overlay");
    if (!system)
        GTEST_SKIP() << "no overlay here";
    std::ofstream(system->top() / "f") << "text";
    fs::create_directory(system->top() / "a");
    for (const auto& [name, ref] : entriesOf(refTo(system->top().string())))
        EXPECT_EQ(FSCompareFSRefs(ref, refTo((system->top() / name).string())), 0) << name;
    for (const auto& [name, ref] : entriesOf(refTo(system->top().parent_path().string())))
        EXPECT_EQ(FSCompareFSRefs(ref, refTo((system->top().parent_path() / name).string())), 0) << name;
    FSReleaseDescriptors();
}

}
