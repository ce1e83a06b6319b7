#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSDirectoryEnumerator.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSFileAttributes.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/platform/files/tree_fixture.h"

#include <sys/socket.h>
#include <sys/un.h>

namespace fs = std::filesystem;

namespace {

class NSFileManagerItemsTest : public TreeTest {
protected:
    /// "yes", "no", or the code of the error.
    template<typename Call> std::string outcome(Call call) const
    {
        NSRef<NSError> error;
        const bool isDone = call(&error);
        return isDone ? "yes" : error ? std::to_string(error->code()) : "no";
    }
    std::string copy(const std::string& from, const std::string& to) const
    {
        return outcome([&](auto* error) { return manager->copyItemAtPath(path(from), path(to), error); });
    }
    std::string move(const std::string& from, const std::string& to) const
    {
        return outcome([&](auto* error) { return manager->moveItemAtPath(path(from), path(to), error); });
    }
    std::string remove(const std::string& name) const
    {
        return outcome([&](auto* error) { return manager->removeItemAtPath(path(name), error); });
    }
    std::string typeOf(const std::string& at) const
    {
        const auto attributes = manager->attributesOfItemAtPath(at);
        return attributes ? attributes->objectForKey(NSFileType)->description()->utf8() : "(null)";
    }
    template<typename T> NSRef<T> attribute(const std::string& name, const NSStringConstant& key) const
    {
        return manager->attributesOfItemAtPath(path(name))->objectForKey<T>(key);
    }

    NSRef<NSFileManager> manager = NSFileManager::defaultManager();
};

TEST_F(NSFileManagerItemsTest, CopiesMovesAndRemoves)
{
    putSome("t");
    EXPECT_EQ(copy("t", "u"), "yes");
    EXPECT_EQ(move("u", "v"), "yes");
    EXPECT_EQ(tree("v"), tree("t"));
    EXPECT_EQ(remove("t"), "yes");
    EXPECT_EQ(names(), "v");
}

TEST_F(NSFileManagerItemsTest, TellsWhatIsWrongByItsCode)
{
    put("a");
    put("b");
    EXPECT_EQ(copy("none", "c"), "-43");
    EXPECT_EQ(copy("a", "b"), "-48");
    EXPECT_EQ(copy("a", "b/c"), "-120");
    EXPECT_EQ(copy("a", std::string(300, 'n')), "-37");
    EXPECT_EQ(move("a", "b"), "-48");
    EXPECT_EQ(remove("none"), "-43");
    EXPECT_EQ(remove(".."), "-50");
    EXPECT_EQ(names(), "a b");
}

TEST_F(NSFileManagerItemsTest, TakesNullForNothing)
{
    EXPECT_FALSE(manager->copyItemAtPath(nullptr, "/x"));
    EXPECT_FALSE(manager->moveItemAtPath("/x", nullptr));
    EXPECT_FALSE(manager->removeItemAtPath(nullptr));
    EXPECT_FALSE(manager->removeItemAtPath(""));
    EXPECT_FALSE(manager->createFileAtPath(nullptr, nullptr));
    EXPECT_FALSE(manager->attributesOfItemAtPath(nullptr));
    EXPECT_FALSE(manager->setAttributes(nullptr, nullptr));
    EXPECT_FALSE(manager->enumeratorAtPath(nullptr));
    EXPECT_EQ(manager->displayNameAtPath(nullptr)->utf8(), "");
}

TEST_F(NSFileManagerItemsTest, DoesNotCutOffAPathAtItsNul)
{
    put("a");
    const auto cut = NSString::stringWithFormat("%@%C.txt", path("a"), u'\0');
    EXPECT_FALSE(manager->removeItemAtPath(cut));
    EXPECT_FALSE(manager->moveItemAtPath(cut, path("b")));
    EXPECT_EQ(names(), "a");
}

TEST_F(NSFileManagerItemsTest, DoesNotTakeHalfACharacterForAReplacementCharacter)
{
    put("\xEF\xBF\xBD", "kept");
    const char16_t half[] = { 0xD800, 0 };
    const auto damaged =
        NSString::stringWithFormat("%@/%@", folder.string(), NSRef<NSString>(std::u16string_view(half, 1)));
    EXPECT_FALSE(manager->fileExistsAtPath(damaged));
    EXPECT_FALSE(manager->removeItemAtPath(damaged));
    EXPECT_FALSE(manager->createFileAtPath(damaged, nullptr));
    EXPECT_FALSE(NSData::dataWithContentsOfFile(damaged));
    EXPECT_EQ(get("\xEF\xBF\xBD"), "kept");
}

TEST_F(NSFileManagerItemsTest, CreatesFiles)
{
    EXPECT_TRUE(manager->createFileAtPath(path("a"), nullptr));
    EXPECT_TRUE(manager->createFileAtPath(path("b"), NSData::dataWithBytes("xy", 2)));
    EXPECT_EQ(get("a"), "");
    EXPECT_EQ(get("b"), "xy");
    EXPECT_TRUE(manager->createFileAtPath(path("b"), NSData::dataWithBytes("z", 1)));
    EXPECT_EQ(get("b"), "z");
    EXPECT_FALSE(manager->createFileAtPath(path("none/a"), nullptr));
    EXPECT_FALSE(manager->createFileAtPath(folder.string(), nullptr));
}

TEST_F(NSFileManagerItemsTest, CreatesWithAttributes)
{
    const auto closed = NSDictionary::of({ { NSFilePosixPermissions, 0600 } });
    EXPECT_TRUE(manager->createFileAtPath(path("a"), nullptr, closed));
    EXPECT_EQ(modeOf(path("a")), 0600u);
    const auto own = NSDictionary::of({ { NSFilePosixPermissions, 0700 } });
    EXPECT_TRUE(manager->createDirectoryAtPath(path("d/e"), true, own));
    EXPECT_EQ(modeOf(path("d/e")), 0700u);
}

TEST_F(NSFileManagerItemsTest, TellsWhatThingsAre)
{
    put("a");
    fs::create_symlink("a", folder / "link");
    mkfifo(path("pipe").c_str(), 0600);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const int endpoint = socket(AF_UNIX, SOCK_STREAM, 0);
    path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    bind(endpoint, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    close(endpoint);
    EXPECT_EQ(typeOf(path("a")), "NSFileTypeRegular");
    EXPECT_EQ(typeOf(path("link")), "NSFileTypeSymbolicLink");
    EXPECT_EQ(typeOf(path("link/")), "NSFileTypeSymbolicLink");
    EXPECT_EQ(typeOf("/"), "NSFileTypeDirectory");
    EXPECT_EQ(typeOf(path("pipe")), "NSFileTypeUnknown");
    EXPECT_EQ(typeOf(path("socket")), "NSFileTypeSocket");
    EXPECT_EQ(typeOf(folder.string()), "NSFileTypeDirectory");
    EXPECT_EQ(typeOf("/dev/null"), "NSFileTypeCharacterSpecial");
    EXPECT_EQ(typeOf(path("none")), "(null)");
}

TEST_F(NSFileManagerItemsTest, TellsAttributes)
{
    put("a", "12345");
    chmod(path("a").c_str(), 0640);
    fs::create_hard_link(folder / "a", folder / "b");
    struct stat status = {};
    stat(path("a").c_str(), &status);
    EXPECT_EQ(attribute<NSNumber>("a", NSFileSize)->unsignedLongLongValue(), 5u);
    EXPECT_EQ(attribute<NSNumber>("a", NSFilePosixPermissions)->unsignedIntValue(), 0640u);
    EXPECT_EQ(attribute<NSNumber>("a", NSFileReferenceCount)->intValue(), 2);
    EXPECT_EQ(attribute<NSNumber>("a", NSFileSystemFileNumber)->unsignedLongValue(), status.st_ino);
    EXPECT_EQ(attribute<NSNumber>("a", NSFileOwnerAccountID)->unsignedIntValue(), status.st_uid);
    EXPECT_EQ(attribute<NSNumber>("a", NSFileGroupOwnerAccountID)->unsignedIntValue(), status.st_gid);
}

TEST_F(NSFileManagerItemsTest, GivesFilesOfOneVolumeOneNumber)
{
    put("a");
    makeFolder("d");
    EXPECT_TRUE(
        NSEqual(attribute<NSNumber>("a", NSFileSystemNumber), attribute<NSNumber>("d", NSFileSystemNumber)));
    EXPECT_FALSE(NSEqual(attribute<NSNumber>("a", NSFileSystemNumber),
        manager->attributesOfItemAtPath("/proc")->objectForKey(NSFileSystemNumber)));
}

TEST_F(NSFileManagerItemsTest, SetsAttributes)
{
    put("a");
    const auto date = NSDate::dateWithTimeIntervalSinceReferenceDate(-1'000'000.25);
    EXPECT_TRUE(manager->setAttributes(
        NSDictionary::of({ { NSFilePosixPermissions, 0444 }, { NSFileModificationDate, date },
            { "unknown", "key" }, { NSFileOwnerAccountID, geteuid() } }),
        path("a")));
    EXPECT_EQ(modeOf(path("a")), 0444u);
    EXPECT_TRUE(NSEqual(attribute<NSDate>("a", NSFileModificationDate), date));
}

TEST_F(NSFileManagerItemsTest, SetsAttributesThroughALink)
{
    put("a");
    fs::create_symlink("a", folder / "link");
    EXPECT_TRUE(manager->setAttributes(NSDictionary::of({ { NSFilePosixPermissions, 0600 } }), path("link")));
    EXPECT_EQ(modeOf(path("a")), 0600u);
}

TEST_F(NSFileManagerItemsTest, TellsWhyAttributesCannotBeSet)
{
    NSRef<NSError> error;
    const auto mode = NSDictionary::of({ { NSFilePosixPermissions, 0600 } });
    EXPECT_FALSE(manager->setAttributes(mode, path("none"), &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_FALSE(manager->setAttributes(nullptr, path("none"), &error));
    EXPECT_EQ(error->code(), -43);
    put("a");
    EXPECT_TRUE(manager->setAttributes(nullptr, path("a")));
    const auto never = NSDate::dateWithTimeIntervalSinceReferenceDate(1e300);
    EXPECT_FALSE(
        manager->setAttributes(NSDictionary::of({ { NSFileModificationDate, never } }), path("a"), &error));
    EXPECT_EQ(error->code(), -50);
}

TEST_F(NSFileManagerItemsTest, ShowsTheName)
{
    EXPECT_EQ(manager->displayNameAtPath(path("Take 1.aif/"))->utf8(), "Take 1.aif");
    EXPECT_EQ(manager->displayNameAtPath("/")->utf8(), "/");
}

TEST_F(NSFileManagerItemsTest, AnswersItsSelectors)
{
    put("a");
    NSRef<NSError> error;
    EXPECT_TRUE(NSSend<bool>(manager, NSSelector("copyItemAtPath:toPath:error:"), NSRef<NSString>(path("a")),
        NSRef<NSString>(path("b")), &error));
    EXPECT_TRUE(
        NSSend<bool>(manager, NSSelector("removeItemAtPath:error:"), NSRef<NSString>(path("a")), &error));
    EXPECT_EQ(names(), "b");
}

}
