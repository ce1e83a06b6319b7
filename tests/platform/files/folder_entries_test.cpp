#include "platform/files/folder_entries.h"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

using platform::FolderEntry;

namespace {

/// One entry as the kernel lays it out.
std::vector<std::byte> entryBytes(std::uint64_t inode, int kind, const std::string& name)
{
    std::vector<std::byte> bytes((19 + name.size() + 1 + 7) / 8 * 8);
    const auto length = static_cast<std::uint16_t>(bytes.size());
    std::memcpy(bytes.data(), &inode, 8);
    std::memcpy(bytes.data() + 16, &length, 2);
    bytes[18] = std::byte(kind);
    std::memcpy(bytes.data() + 19, name.c_str(), name.size() + 1);
    return bytes;
}

std::vector<std::byte> operator+(std::vector<std::byte> a, const std::vector<std::byte>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// Gives out prepared pieces of a folder.
class PreparedSystem final : public platform::NodeSystem {
public:
    std::vector<std::vector<std::byte>> pieces;
    int error = 0;
    int closed = -1;

    std::ptrdiff_t list(int, std::span<std::byte> buffer) override
    {
        if (pieces.empty())
            return -error;
        const auto piece = pieces.front();
        pieces.erase(pieces.begin());
        std::copy(piece.begin(), piece.end(), buffer.begin());
        return static_cast<std::ptrdiff_t>(piece.size());
    }
    void close(int descriptor) override { closed = descriptor; }

    int open(int, const char*) override { return -ENOSYS; }
    int openReal(const char*) override { return -ENOSYS; }
    int openTarget(const char*) override { return -ENOSYS; }
    int openFolder(int, const char*) override { return -ENOSYS; }
    int openByHandle(int, const platform::FileHandle&) override { return -ENOSYS; }
    int attributes(int, const char*, platform::FileAttributes&) override { return -ENOSYS; }
    int handle(int, const char*, HandlePurpose, platform::FileHandle&) override { return -ENOSYS; }
    int volume(int, Volume&) override { return -ENOSYS; }
    int volumeAt(const char*, Volume&) override { return -ENOSYS; }
    int pathOf(int, std::string&) override { return -ENOSYS; }
    int readLink(int, std::string&) override { return -ENOSYS; }
    int renameWithoutReplacing(int, const char*, const char*) override { return -ENOSYS; }
    int createFile(int, const char*) override { return -ENOSYS; }
    int createFolder(int, const char*) override { return -ENOSYS; }
    std::ptrdiff_t readAttribute(const char*, const char*, std::span<std::byte>) override { return -ENOSYS; }
    int writeAttribute(const char*, const char*, std::span<const std::byte>) override { return -ENOSYS; }
    int removeAttribute(const char*, const char*) override { return -ENOSYS; }
    std::size_t descriptorLimit() override { return 0; }
};

TEST(FolderEntriesTest, AreReadPieceByPieceWithoutTheFoldersThemselves)
{
    PreparedSystem system;
    system.pieces = { entryBytes(2, 4, ".") + entryBytes(1, 4, "..") + entryBytes(7, 4, "a"),
        entryBytes(8, 10, "alias") + entryBytes(9, 8, "f") };
    std::string told;
    {
        platform::FolderReader reader(system, 5);
        FolderEntry entry;
        while (reader.next(entry) == 1)
            told += std::string(entry.name) + ":" + std::to_string(entry.inode) + ":"
                + std::to_string(entry.kind) + " ";
        EXPECT_EQ(reader.next(entry), 0);
    }
    EXPECT_EQ(told, "a:7:1 alias:8:2 f:9:3 ");
    EXPECT_EQ(system.closed, 5);
}

TEST(FolderEntriesTest, TellAFaultAfterWhatWasRead)
{
    PreparedSystem system;
    system.pieces = { entryBytes(9, 8, "f") };
    system.error = EIO;
    platform::FolderReader reader(system, 5);
    FolderEntry entry;
    EXPECT_EQ(reader.next(entry), 1);
    EXPECT_EQ(reader.next(entry), -EIO);
}

TEST(FolderEntriesTest, BrokenBytesAreNoEntries)
{
    const auto good = entryBytes(9, 8, "name");
    FolderEntry entry;
    for (std::size_t length = 0; length < good.size(); ++length) {
        auto bytes = std::span(good).first(length);
        EXPECT_FALSE(platform::takeFolderEntry(bytes, entry));
    }
    auto endless = good;
    std::memset(endless.data() + 19, 'n', endless.size() - 19);
    std::span<const std::byte> bytes = endless;
    EXPECT_FALSE(platform::takeFolderEntry(bytes, entry));
    auto empty = good;
    empty[16] = std::byte(0);
    bytes = empty;
    EXPECT_FALSE(platform::takeFolderEntry(bytes, entry));
}

}
