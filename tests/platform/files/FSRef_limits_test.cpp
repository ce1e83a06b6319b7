// References beyond what the process may open, and what else happens to descriptors.
#include "LUMPlatform/FSRef.h"

#include "platform/files/descriptor_pool.h"
#include "tests/platform/files/faulty_node_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <fcntl.h>
#include <functional>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

class FSRefLimitsTest : public ReferenceTest {
protected:
    FSRefLimitsTest() { FSReleaseDescriptors(); }
    ~FSRefLimitsTest() override { FSReleaseDescriptors(); }

    /// Runs in a child with so many descriptors, and tells whether all went well there.
    static bool holdsInChild(rlim_t descriptors, const std::function<bool()>& claim)
    {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit limit { descriptors, descriptors };
            _exit(setrlimit(RLIMIT_NOFILE, &limit) == 0 && claim() ? 0 : 1);
        }
        int status = 0;
        return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)
            && WEXITSTATUS(status) == 0;
    }
    std::vector<FSRef> many(int count) const
    {
        std::vector<FSRef> refs;
        for (int i = 0; i < count; ++i)
            refs.push_back(refTo(file(std::to_string(i), "")));
        return refs;
    }
};

/// 100,000 references to the files "0" to "999", of which every second is moved and its folder renamed.
class FSRefPressureTest : public FSRefLimitsTest {
protected:
    static constexpr int kFiles = 1000;
    static constexpr int kReferences = 100'000;

    bool areAllFollowed() const
    {
        std::vector<FSRef> refs;
        for (int i = 0; i < kReferences; ++i)
            refs.push_back(refTo(at(std::to_string(i % kFiles))));
        for (int i = 0; i < kFiles; i += 2)
            rename(std::to_string(i), "a/" + std::to_string(i));
        rename("a", "b");
        for (int i = 0; i < kReferences; ++i) {
            const std::string name = std::to_string(i % kFiles);
            if (pathOf(refs[static_cast<std::size_t>(i)]) != at(i % kFiles % 2 ? name : "b/" + name))
                return false;
        }
        return openDescriptors() < 600;
    }
};

TEST_F(FSRefPressureTest, AHundredThousandLiveUnderALimitOf1024)
{
    folder("a");
    (void)many(kFiles);
    EXPECT_TRUE(holdsInChild(1024, [&] { return areAllFollowed(); }));
}

TEST_F(FSRefPressureTest, AHundredThousandLiveUnderALimitOf1024ForAPlainUser)
{
    constexpr uid_t kNobody = 65534;
    if (geteuid() != 0)
        GTEST_SKIP() << "the test before was that";
    folder("a");
    (void)many(kFiles);
    ASSERT_EQ(chown(mFolder.c_str(), kNobody, kNobody), 0);
    for (const auto& entry : fs::directory_iterator(mFolder))
        ASSERT_EQ(chown(entry.path().c_str(), kNobody, kNobody), 0);
    EXPECT_TRUE(
        holdsInChild(1024, [&] { return setgid(kNobody) == 0 && setuid(kNobody) == 0 && areAllFollowed(); }));
}

TEST_F(FSRefLimitsTest, TheBudgetIsAQuarterOfTheProcessLimitWithinBounds)
{
    FaultyNodeSystem system;
    const auto budgetFor = [&](std::size_t limit) {
        system.setLimit(limit);
        FSReleaseDescriptors();
        return platform::DescriptorPool::shared().budget();
    };
    EXPECT_EQ(budgetFor(40), 16u);
    EXPECT_EQ(budgetFor(1024), 256u);
    EXPECT_EQ(budgetFor(524'288), 4096u);
}

TEST_F(FSRefLimitsTest, AreGivenBackWhenTheRestOfTheProgramNeedsThem)
{
    (void)many(60);
    EXPECT_TRUE(holdsInChild(64, [&] {
        std::vector<FSRef> refs;
        for (int i = 0; i < 60; ++i)
            refs.push_back(refTo(at(std::to_string(i))));
        // All that are left, and 20 more
        std::vector<int> own;
        for (int opened = 0; opened >= 0; own.push_back(opened))
            opened = open("/dev/null", O_RDONLY);
        for (int i = 0; i < 60; ++i) {
            if (pathOf(refs[static_cast<std::size_t>(i)]) != at(std::to_string(i)))
                return false;
        }
        return true;
    }));
}

TEST_F(FSRefLimitsTest, AReferenceIsMadeWithoutAnyDescriptor)
{
    const std::string path = file("f");
    fs::create_symlink("f", at("alias"));
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::Open, EMFILE);
    FSRef ref;
    FSRef link;
    ASSERT_EQ(FSPathMakeRef(path, ref), 0);
    ASSERT_EQ(FSPathMakeRef(at("alias"), link), 0);
    EXPECT_EQ(pathOf(ref), path);
    EXPECT_EQ(pathOf(link), at("alias"));
    EXPECT_EQ(FSResolveAliasFile(link, true, nullptr, nullptr), 0);
    EXPECT_EQ(FSCompareFSRefs(link, ref), 0);
    system.heal();
    EXPECT_EQ(FSCompareFSRefs(refTo(path), ref), 0);
    rename("f", "g");
    EXPECT_EQ(pathOf(ref), at("g"));
}

TEST_F(FSRefLimitsTest, TheBudgetIsHalvedWhenTheProcessRunsOut)
{
    const auto refs = many(100);
    auto& pool = platform::DescriptorPool::shared();
    ASSERT_EQ(pool.held(), 100u);
    EXPECT_TRUE(pool.makeRoom());
    EXPECT_EQ(pool.held(), 50u);
    EXPECT_EQ(pool.budget(), 50u);
    while (pool.makeRoom()) { }
    EXPECT_EQ(pool.held(), 0u);
    EXPECT_EQ(pool.budget(), 16u);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(pathOf(refs[static_cast<std::size_t>(i)]), at(std::to_string(i)));
    EXPECT_EQ(pool.held(), 16u);
}

TEST_F(FSRefLimitsTest, TheLeastRecentlyUsedAreGivenBackFirst)
{
    auto& pool = platform::DescriptorPool::shared();
    while (pool.makeRoom() || pool.budget() > 16) { }
    const auto refs = many(16);
    const auto isHeld = [&](std::size_t i) { return static_cast<bool>(pool.lease(*refs[i].node())); };
    (void)pool.lease(*refs[0].node()); // used
    const FSRef more = refTo(file("more"));
    EXPECT_TRUE(isHeld(0));
    EXPECT_FALSE(isHeld(1));
    EXPECT_TRUE(isHeld(2));
}

TEST_F(FSRefLimitsTest, AskingForAPathIsAUse)
{
    auto& pool = platform::DescriptorPool::shared();
    while (pool.makeRoom() || pool.budget() > 16) { }
    const auto refs = many(16);
    EXPECT_EQ(pathOf(refs[0]), at("0"));
    const FSRef more = refTo(file("more"));
    EXPECT_TRUE(pool.lease(*refs[0].node()));
    EXPECT_FALSE(pool.lease(*refs[1].node()));
}

TEST_F(FSRefLimitsTest, ADescriptorInUseIsNotGivenBack)
{
    auto& pool = platform::DescriptorPool::shared();
    const FSRef ref = refTo(file("f"));
    {
        const auto lease = pool.lease(*ref.node());
        pool.releaseAll();
        EXPECT_NE(fcntl(lease.get(), F_GETFD), -1);
        EXPECT_EQ(pool.held(), 1u);
    }
    pool.releaseAll();
    EXPECT_EQ(pool.held(), 0u);
}

TEST_F(FSRefLimitsTest, AMoveBeforeADescriptorIsGivenBackIsRemembered)
{
    folder("far/far/away");
    const FSRef ref = refTo(file("f"));
    rename("f", "far/far/away/f");
    FSReleaseDescriptors();
    EXPECT_EQ(platform::DescriptorPool::shared().path(*ref.node()), at("far/far/away/f"));
}

TEST_F(FSRefLimitsTest, ANumberThatOthersClosedAndGotIsNeitherAskedNorClosed)
{
    file("other");
    const std::string path = file("f");
    {
        const FSRef ref = refTo(path);
        const int number = platform::DescriptorPool::shared().lease(*ref.node()).get();
        const int other = open(at("other").c_str(), O_RDONLY);
        ASSERT_EQ(dup2(other, number), number);
        close(other);
        rename("f", "g");
        EXPECT_EQ(pathOf(ref), at("g"));
        EXPECT_NE(fcntl(number, F_GETFD), -1);
        const FSRef unused = refTo(at("g"));
        const int second = platform::DescriptorPool::shared().lease(*unused.node()).get();
        ASSERT_EQ(dup2(number, second), second);
        FSReleaseDescriptors();
        EXPECT_NE(fcntl(second, F_GETFD), -1) << "closed what another part of the program opened";
        close(second);
        close(number);
    }
    const FSRef ref = refTo(at("g"));
    close(platform::DescriptorPool::shared().lease(*ref.node()).get());
    EXPECT_EQ(pathOf(ref), at("g"));
}

TEST_F(FSRefLimitsTest, AForkedChildGoesOnWithItsCopies)
{
    folder("a");
    const FSRef ref = refTo(file("f"));
    EXPECT_TRUE(holdsInChild(1024, [&] {
        rename("f", "a/f");
        return pathOf(ref) == at("a/f") && pathOf(letGo(ref)) == at("a/f");
    }));
    EXPECT_EQ(pathOf(ref), at("a/f"));
}

TEST_F(FSRefLimitsTest, NoDescriptorIsKeptOnRemovableVolumes)
{
    std::error_code error;
    if (!fs::is_directory("/mnt") || access("/mnt", W_OK) != 0)
        GTEST_SKIP() << "/mnt is not to be written to";
    useFolderIn("/mnt");
    FSReleaseDescriptors();
    const std::size_t before = openDescriptors();
    const FSRef ref = refTo(file("f"));
    EXPECT_EQ(pathOf(ref), at("f"));
    EXPECT_EQ(openDescriptors(), before);
    rename("f", "g");
    EXPECT_EQ(pathOf(ref), at("g"));
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(FSRefLimitsTest, TheSpaceOfARemovedFileIsGivenBackOnceItIsMissed)
{
    auto& pool = platform::DescriptorPool::shared();
    const FSRef ref = refTo(file("f"));
    remove("f");
    EXPECT_EQ(pool.held(), 1u);
    EXPECT_EQ(pathOf(ref), "(-43)");
    EXPECT_EQ(pool.held(), 0u);
    file("f");
    EXPECT_EQ(pathOf(ref), "(-43)");
    EXPECT_NE(FSCompareFSRefs(ref, refTo(at("f"))), 0);
}

TEST_F(FSRefLimitsTest, ARenameInALargeFolderIsFound)
{
    file("other");
    for (int i = 0; i < 40'000; ++i)
        ASSERT_EQ(link(at("other").c_str(), at("a" + std::to_string(i)).c_str()), 0);
    const auto refs = many(20);
    FSReleaseDescriptors();
    for (int i = 0; i < 20; ++i)
        rename(std::to_string(i), "renamed " + std::to_string(i));
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(pathOf(refs[static_cast<std::size_t>(i)]), at("renamed " + std::to_string(i)));
}

TEST_F(FSRefLimitsTest, OneSearchIsEnoughForAllBelowARenamedFolder)
{
    folder("a/b");
    const FSRef first = refTo(file("a/b/first"));
    const FSRef second = refTo(file("a/second"));
    FSReleaseDescriptors();
    rename("a", "c");
    EXPECT_EQ(pathOf(first), at("c/b/first"));
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::OpenFolder, EIO);
    EXPECT_EQ(pathOf(second), at("c/second"));
    EXPECT_FALSE(system.hasFailed()) << "searched again";
}

TEST_F(FSRefLimitsTest, ARenamedFolderIsFoundWithoutReadingThoseBesideIt)
{
    for (int i = 0; i < 30; ++i)
        folder("beside " + std::to_string(i));
    folder("a/b/c");
    const FSRef ref = letGo(refTo(file("a/b/c/f")));
    rename("a", "z");
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::List, EIO, 2); // the folder above is read to its end
    EXPECT_EQ(pathOf(ref), at("z/b/c/f"));
}

TEST_F(FSRefLimitsTest, NothingIsSearchedForThatIsKnownToBeGone)
{
    const FSRef asked = refTo(file("f"));
    const FSRef released = refTo(at("f"));
    remove("f");
    EXPECT_EQ(pathOf(asked), "(-43)");
    FSReleaseDescriptors();
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::OpenFolder, EIO);
    EXPECT_EQ(pathOf(asked), "(-43)");
    EXPECT_EQ(pathOf(released), "(-43)");
    EXPECT_FALSE(system.hasFailed());
}

/// References to files of one folder, which nothing holds. The folder above has not changed for long.
class FSRefMissingTest : public FSRefLimitsTest {
protected:
    FSRefMissingTest()
    {
        folder("a/b");
        for (int i = 0; i < 2; ++i)
            refs.push_back(refTo(file("a/b/" + std::to_string(i))));
        FSReleaseDescriptors();
    }
    void age(const std::string& name) const
    {
        fs::last_write_time(at(name), fs::file_time_type::clock::now() - std::chrono::hours(1));
    }

    std::vector<FSRef> refs;
};

TEST_F(FSRefMissingTest, OneSearchTellsThatAllAreGone)
{
    const std::ifstream keepingItsNumber(at("a/b/1")); // which another program's new file might get
    remove("a/b");
    age("a");
    EXPECT_EQ(pathOf(refs[0]), "(-43)");
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::List, EIO, 2); // the folder above is read to its end
    EXPECT_EQ(pathOf(refs[1]), "(-43)");
    EXPECT_FALSE(system.hasFailed()) << "searched again";
}

TEST_F(FSRefMissingTest, WhatTheLastSearchCameByIsFound)
{
    folder("a/c/d");
    rename("a/b/1", "a/c/d/1");
    remove("a/b");
    age("a");
    EXPECT_EQ(pathOf(refs[0]), "(-43)");
    EXPECT_EQ(pathOf(refs[1]), at("a/c/d/1"));
}

TEST_F(FSRefMissingTest, WhatCameSinceTheLastSearchIsFound)
{
    rename("a/b/1", "1");
    remove("a/b");
    age("a");
    EXPECT_EQ(pathOf(refs[0]), "(-43)");
    rename("1", "a/1");
    EXPECT_EQ(pathOf(refs[1]), at("a/1"));
}

TEST_F(FSRefMissingTest, AFolderThatHasJustChangedIsSearchedAgain)
{
    remove("a/b");
    fs::last_write_time(at("a"), fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(pathOf(refs[0]), "(-43)");
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::List, EIO);
    EXPECT_EQ(pathOf(refs[1]), "(-43)");
    EXPECT_TRUE(system.hasFailed());
}

TEST_F(FSRefLimitsTest, AFailedSearchIsNotRepeatedAtOnce)
{
    const FSRef ref = letGo(refTo(file("f")));
    remove("f");
    EXPECT_EQ(pathOf(ref), "(-43)") << "after a search, since nothing held it";
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::OpenFolder, EIO);
    EXPECT_EQ(pathOf(ref), "(-43)");
    EXPECT_FALSE(system.hasFailed()) << "searched again";
}

}
