#include "examples/incoming/file_record.h"

#include "LUMPlatform/NSClass.h"

namespace {

constexpr NSStringConstant kName("name");
constexpr NSStringConstant kSize("size");
constexpr NSStringConstant kStored("stored");
constexpr NSStringConstant kCrc32("crc32");
constexpr NSStringConstant kMd5("md5");
constexpr NSStringConstant kSha1("sha1");
constexpr NSStringConstant kSeconds("seconds");
constexpr NSStringConstant kSource("source");

std::string textOf(NSCoder& coder, const NSStringConstant& key)
{
    auto text = coder.decodeObjectForKey<NSString>(key);
    return text ? text->utf8() : std::string();
}

}

const NSClass& FileRecord::classObject()
{
    static const NSClass& type = NSClass::define("FileRecord", &NSObject::classObject(), NSCoding::methods());
    return type;
}

FileRecord::FileRecord(const Receipt& receipt, const NSRef<LUMFileRef>& source)
    : mReceipt(receipt), mSource(source)
{
}

FileRecord::~FileRecord() = default;

NSRef<FileRecord> FileRecord::recordOf(const Receipt& receipt, const NSRef<LUMFileRef>& source)
{
    return NSMake<FileRecord>(receipt, source);
}

void FileRecord::encodeWithCoder(NSCoder& coder) const
{
    coder.encodeObjectForKey(mReceipt.name, kName);
    coder.encodeInt64(static_cast<std::int64_t>(mReceipt.size), kSize);
    coder.encodeInt64(static_cast<std::int64_t>(mReceipt.stored), kStored);
    coder.encodeInt64(mReceipt.crc32, kCrc32);
    coder.encodeObjectForKey(mReceipt.md5, kMd5);
    coder.encodeObjectForKey(mReceipt.sha1, kSha1);
    coder.encodeDouble(mReceipt.seconds, kSeconds);
    coder.encodeObjectForKey(mSource, kSource);
}

NSRef<FileRecord> FileRecord::initWithCoder(NSCoder& coder)
{
    Receipt receipt;
    receipt.name = textOf(coder, kName);
    receipt.size = static_cast<std::uint64_t>(coder.decodeInt64ForKey(kSize));
    receipt.stored = static_cast<std::uint64_t>(coder.decodeInt64ForKey(kStored));
    receipt.crc32 = static_cast<std::uint32_t>(coder.decodeInt64ForKey(kCrc32));
    receipt.md5 = textOf(coder, kMd5);
    receipt.sha1 = textOf(coder, kSha1);
    receipt.seconds = coder.decodeDoubleForKey(kSeconds);
    return recordOf(receipt, coder.decodeObjectForKey<LUMFileRef>(kSource));
}

NSRef<NSString> FileRecord::description() const
{
    const auto path = mSource ? mSource->path() : nullptr;
    return NSString::stringWithFormat(
        "name    %s\nsize    %llu\nstored  %llu\nCRC-32  %08x\nMD5     %s\nSHA-1   %s\n"
        "source  %s",
        mReceipt.name, mReceipt.size, mReceipt.stored, mReceipt.crc32, mReceipt.md5, mReceipt.sha1,
        path ? path->utf8() : "gone");
}
