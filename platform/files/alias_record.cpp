#include "platform/files/alias_record.h"

#include <algorithm>
#include <string_view>

namespace platform {

namespace {

constexpr std::string_view kMagic = "FSal";
constexpr std::uint64_t kVersion = 1;
constexpr std::size_t kMaxAncestors = 4096;
constexpr std::size_t kMaxPath = 10240;

class Writer {
public:
    void number(std::uint64_t value, std::size_t length)
    {
        for (std::size_t i = length; i-- > 0;)
            mBytes.push_back(static_cast<std::byte>(value >> 8 * i));
    }
    void text(std::string_view text)
    {
        const auto bytes = std::as_bytes(std::span(text));
        mBytes.insert(mBytes.end(), bytes.begin(), bytes.end());
    }
    void handle(const FileHandle& handle)
    {
        if (!handle)
            return;
        number(static_cast<std::uint32_t>(handle.type()), 4);
        mBytes.insert(mBytes.end(), handle.bytes().begin(), handle.bytes().end());
    }
    std::vector<std::byte> take() { return std::move(mBytes); }

private:
    std::vector<std::byte> mBytes;
};

/// Reads zeros beyond the end, and remembers that it did.
class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : mBytes(bytes) { }

    std::span<const std::byte> take(std::size_t length)
    {
        mIsShort |= length > mBytes.size();
        const auto taken = mBytes.first(std::min(length, mBytes.size()));
        mBytes = mBytes.subspan(taken.size());
        return taken;
    }
    std::uint64_t number(std::size_t length)
    {
        std::uint64_t value = 0;
        for (const std::byte byte : take(length))
            value = value << 8 | std::to_integer<std::uint64_t>(byte);
        return mIsShort ? 0 : value;
    }
    std::string_view text(std::size_t length)
    {
        const auto taken = take(length);
        return { reinterpret_cast<const char*>(taken.data()), taken.size() };
    }
    FileHandle handle(std::size_t length)
    {
        if (length == 0)
            return {};
        const auto type = static_cast<std::int32_t>(static_cast<std::uint32_t>(number(4)));
        return FileHandle(type, take(length));
    }
    std::size_t left() const { return mBytes.size(); }
    bool isWhole() const { return !mIsShort && mBytes.empty(); }

private:
    std::span<const std::byte> mBytes;
    bool mIsShort = false;
};

bool isPath(std::string_view path)
{
    return path.starts_with('/') && path.size() <= kMaxPath && path.find('\0') == std::string_view::npos;
}

}

std::vector<std::byte> encodeAlias(const AliasRecord& record)
{
    if (record.ancestors.size() > kMaxAncestors || !isPath(record.path))
        return {};
    Writer writer;
    writer.text(kMagic);
    writer.number(kVersion, 2);
    writer.number(record.ancestors.size(), 2);
    writer.number(record.path.size(), 4);
    writer.number(static_cast<std::uint8_t>(record.identity.kind), 1);
    writer.number(record.identity.handle.bytes().size(), 1);
    writer.number(record.finding.bytes().size(), 1);
    writer.number(record.folder.bytes().size(), 1);
    writer.number(record.identity.volume, 8);
    writer.number(record.volumeType, 8);
    writer.number(record.identity.inode, 8);
    writer.number(static_cast<std::uint64_t>(record.identity.born), 8);
    writer.number(record.size, 8);
    writer.number(static_cast<std::uint64_t>(record.modified), 8);
    writer.handle(record.identity.handle);
    writer.handle(record.finding);
    writer.handle(record.folder);
    for (const std::uint64_t inode : record.ancestors)
        writer.number(inode, 8);
    writer.text(record.path);
    return writer.take();
}

bool decodeAlias(std::span<const std::byte> bytes, AliasRecord& record)
{
    Reader reader(bytes);
    if (reader.text(kMagic.size()) != kMagic || reader.number(2) != kVersion)
        return false;
    const std::size_t ancestors = reader.number(2);
    const std::size_t pathLength = reader.number(4);
    const std::uint64_t kind = reader.number(1);
    const std::size_t telling = reader.number(1);
    const std::size_t finding = reader.number(1);
    const std::size_t folder = reader.number(1);
    if (ancestors > kMaxAncestors || pathLength > kMaxPath || kind < 1 || kind > 4
        || std::max({ telling, finding, folder }) > FileHandle::kMaxLength)
        return false;
    record.identity = {};
    record.identity.kind = static_cast<FileKind>(kind);
    record.identity.volume = reader.number(8);
    record.volumeType = reader.number(8);
    record.identity.inode = reader.number(8);
    record.identity.born = static_cast<std::int64_t>(reader.number(8));
    record.size = reader.number(8);
    record.modified = static_cast<std::int64_t>(reader.number(8));
    record.identity.handle = reader.handle(telling);
    record.finding = reader.handle(finding);
    record.folder = reader.handle(folder);
    if (reader.left() != ancestors * 8 + pathLength)
        return false;
    record.ancestors.clear();
    for (std::size_t i = 0; i < ancestors; ++i)
        record.ancestors.push_back(reader.number(8));
    record.path = reader.text(pathLength);
    return reader.isWhole() && isPath(record.path);
}

}
