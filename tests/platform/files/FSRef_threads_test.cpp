#include "LUMPlatform/FSRef.h"

#include "tests/platform/files/reference_fixture.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

class FSRefThreadsTest : public ReferenceTest {
protected:
    ~FSRefThreadsTest() override { FSReleaseDescriptors(); }
};

TEST_F(FSRefThreadsTest, PathsAreRightWhileAnotherThreadTakesDescriptorsAway)
{
    constexpr int kFiles = 40;
    constexpr int kRounds = 30;
    std::vector<FSRef> refs;
    for (int i = 0; i < kFiles; ++i)
        refs.push_back(refTo(file(std::to_string(i), "")));
    std::atomic<int> running { 3 };
    std::atomic<int> wrong { 0 };
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back([&, own = refs] {
            for (int round = 0; round < kRounds; ++round)
                for (int i = 0; i < kFiles; ++i)
                    wrong += pathOf(own[static_cast<std::size_t>(i)]) != at(std::to_string(i));
            --running;
        });
    while (running > 0)
        FSReleaseDescriptors();
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(FSRefThreadsTest, PathsAreOldOrNewWhileTheFileMoves)
{
    folder("a");
    folder("b");
    const FSRef ref = refTo(file("a/f"));
    std::atomic<bool> isOver { false };
    std::thread mover([&] {
        for (int i = 0; i < 300; ++i) {
            rename("a/f", "b/f");
            rename("b/f", "a/f");
        }
        isOver = true;
    });
    int wrong = 0;
    while (!isOver) {
        std::string path;
        if (FSRefMakePath(ref, path) == 0) // a moving file may be missed
            wrong += path != at("a/f") && path != at("b/f");
    }
    mover.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(FSRefThreadsTest, ReferencesComeAndGoOnEveryThread)
{
    for (int i = 0; i < 20; ++i)
        file(std::to_string(i), "");
    std::vector<std::thread> threads;
    std::atomic<int> wrong { 0 };
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                const std::string path = at(std::to_string(round % 20));
                FSRef ref = refTo(path);
                const FSRef copy = ref;
                if (round % 7 == 0)
                    FSReleaseDescriptors();
                wrong += pathOf(copy) != path || FSCompareFSRefs(ref, refTo(path)) != 0;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

}
