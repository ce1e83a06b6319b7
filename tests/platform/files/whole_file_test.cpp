#include "platform/files/whole_file.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/platform/files/faulty_file_system.h"
#include "tests/temporary_folder.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

class WholeFileTest : public ObjectTest {
protected:
    std::string path(const std::string& name) const { return mFolder / name; }
    void put(const std::string& name, const std::string& text) const { writeFile(path(name), text); }
    std::string get(const std::string& name) const { return readFile(path(name)); }
    std::size_t entries() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(mFolder.path()), fs::directory_iterator()));
    }

    TemporaryFolder mFolder;
};

TEST_F(WholeFileTest, WritesAndReadsBack)
{
    auto data = NSData::dataWithBytes("a\0b", 3);
    EXPECT_TRUE(data->writeToFile(path("f"), true));
    EXPECT_TRUE(NSEqual(NSData::dataWithContentsOfFile(path("f")), data));
    EXPECT_TRUE(NSData::data()->writeToFile(path("f"), false));
    EXPECT_EQ(NSData::dataWithContentsOfFile(path("f"))->length(), 0u);
    EXPECT_EQ(entries(), 1u);
}

TEST_F(WholeFileTest, ReadsAFileWhoseSizeIsNotTold)
{
    EXPECT_GT(NSData::dataWithContentsOfFile("/proc/self/status")->length(), 0u);
}

TEST_F(WholeFileTest, TellsWhatIsWrong)
{
    const auto codeFor = [&](const NSRef<NSString>& from) {
        NSRef<NSError> error;
        EXPECT_FALSE(NSData::dataWithContentsOfFile(from, &error));
        return error->code();
    };
    EXPECT_EQ(codeFor(path("none")), -43);
    EXPECT_EQ(codeFor(nullptr), -50);
    EXPECT_EQ(codeFor(""), -50);
    EXPECT_EQ(codeFor(std::string("/tmp\0x", 6)), -50);
    NSRef<NSError> error;
    EXPECT_FALSE(NSData::data()->writeToFile(path("none/f"), true, &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_FALSE(NSData::data()->writeToFile(mFolder.path().string(), true));
}

TEST_F(WholeFileTest, KeepsPermissionsOfWhatItReplaces)
{
    put("f", "old");
    chmod(path("f").c_str(), 0640);
    EXPECT_EQ(platform::replaceFile(platform::FileSystem::real(), path("f"), bytesOf("new")), 0);
    struct stat status = {};
    stat(path("f").c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(WholeFileTest, WritesThroughALinkAlsoWhereNothingIsThere)
{
    put("target", "old");
    fs::create_symlink("target", path("link"));
    fs::create_symlink("later", path("dangling"));
    EXPECT_EQ(platform::replaceFile(platform::FileSystem::real(), path("link"), bytesOf("new")), 0);
    EXPECT_EQ(platform::replaceFile(platform::FileSystem::real(), path("dangling"), bytesOf("made")), 0);
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_TRUE(fs::is_symlink(path("dangling")));
    EXPECT_EQ(get("target"), "new");
    EXPECT_EQ(get("later"), "made");
}

TEST_F(WholeFileTest, EndsOnLinksThatGoRoundInCircles)
{
    fs::create_symlink("b", path("a"));
    fs::create_symlink("a", path("b"));
    EXPECT_EQ(platform::replaceFile(platform::FileSystem::real(), path("a"), bytesOf("x")), -ELOOP);
}

TEST_F(WholeFileTest, RefusesALinkWhereNoneIsToBeFollowed)
{
    put("target", "old");
    fs::create_symlink("target", path("link"));
    auto& files = platform::FileSystem::real();
    platform::FileContent content;
    EXPECT_EQ(platform::readFile(files, path("link"), content, { platform::LastLink::Refused }), -ELOOP);
    EXPECT_EQ(platform::readFile(files, path("target"), content, { platform::LastLink::Refused }), 0);
    EXPECT_EQ(content.length, 3u);
    EXPECT_EQ(
        platform::replaceFile(files, path("link"), bytesOf("new"), platform::LastLink::Refused), -ELOOP);
    EXPECT_EQ(get("target"), "old");
    EXPECT_EQ(platform::replaceFile(files, path("target"), bytesOf("new"), platform::LastLink::Refused), 0);
    EXPECT_EQ(platform::replaceFile(files, path("none"), bytesOf("new"), platform::LastLink::Refused), 0);
    EXPECT_EQ(get("target") + get("none"), "newnew");
    EXPECT_EQ(entries(), 3u);
}

TEST_F(WholeFileTest, ReadsNoFileWithMoreBytesThanItMayHave)
{
    put("f", "abc");
    auto& files = platform::FileSystem::real();
    platform::FileContent content;
    EXPECT_EQ(platform::readFile(files, path("f"), content, { .largest = 2 }), -EFBIG);
    EXPECT_EQ(platform::readFile(files, "/proc/self/status", content, { .largest = 2 }), -EFBIG);
    EXPECT_EQ(content.length, 0u);
    EXPECT_EQ(platform::readFile(files, path("f"), content, { .largest = 3 }), 0);
}

TEST_F(WholeFileTest, ReplacesAFileOfTheLongestName)
{
    const std::string name(255, 'n');
    EXPECT_EQ(platform::replaceFile(platform::FileSystem::real(), path(name), bytesOf("x")), 0);
    EXPECT_EQ(get(name), "x");
}

class WholeFileFaultTest : public WholeFileTest, public testing::WithParamInterface<int> { };

TEST_P(WholeFileFaultTest, HoldsOldOrNewContentWhicheverCallFails)
{
    for (int at = 0;; ++at) {
        put("f", "old content");
        FaultyFileSystem files(at, GetParam());
        int result = platform::replaceFile(files, path("f"), bytesOf("new content"));
        ASSERT_EQ(files.openFiles(), 0) << "call " << at;
        ASSERT_EQ(entries(), 1u) << "a hidden file stayed, call " << at;
        const std::string content = get("f");
        ASSERT_TRUE(content == "old content" || content == "new content") << content;
        if (result == 0) {
            ASSERT_EQ(content, "new content");
        }
        if (!files.failed())
            break;
    }
}

TEST_P(WholeFileFaultTest, ReadsAllOrNothingWhicheverCallFails)
{
    put("f", "content");
    for (int at = 0;; ++at) {
        FaultyFileSystem files(at, GetParam());
        platform::FileContent content;
        int result = platform::readFile(files, path("f"), content);
        ASSERT_EQ(files.openFiles(), 0);
        if (result == 0) {
            ASSERT_EQ(content.length, 7u);
        } else {
            ASSERT_EQ(content.length, 0u);
        }
        if (!files.failed())
            break;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Errors, WholeFileFaultTest, testing::Values(ENOSPC, EIO, EROFS, EACCES, EXDEV, EMFILE, EDQUOT, EPERM));

}
