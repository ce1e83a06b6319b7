#include "LUMFoundation/LUMData_Compression.h"

#include "core/extension_operation.h"
#include "core/method_tables.h"
#include "data/base32.h"
#include "data/cobs.h"
#include "data/crc32.h"
#include "data/data_of_buffer.h"
#include "data/deflate_stream.h"
#include "data/digest.h"

#include <array>
#include <cstring>

namespace {

using lum::DigestAlgorithm;
using lum::Framing;

constexpr NSRange kNotFound { NSNotFound, 0 };
constexpr std::size_t kTokenSize = sizeof(void*);

NSRange nullTerminated(const NSRef<NSData>& data, std::int32_t start)
{
    std::span<const std::byte> bytes = data->bytes();
    if (start < 0 || static_cast<std::size_t>(start) >= bytes.size())
        return kNotFound;
    bytes = bytes.subspan(static_cast<std::size_t>(start));
    const void* zero = std::memchr(bytes.data(), 0, bytes.size());
    if (!zero)
        return kNotFound;
    auto length = static_cast<const std::byte*>(zero) - bytes.data();
    return { static_cast<NSUInteger>(start), static_cast<NSUInteger>(length) };
}

NSRef<NSString> base32(const NSRef<NSData>& data)
{
    return NSString::stringWithLength(lum::base32Length(data->length()),
        [&](char16_t* characters) { lum::encodeBase32(data->bytes(), characters); });
}

// Deliberate: empty data is given back as it is, the very object, by this and by the next three.
NSRef<NSData> stuffed(const NSRef<NSData>& data)
{
    return data->length() > 0 ? lum::dataOfBuffer(lum::encodeCOBS(data->bytes())) : data;
}

NSRef<NSData> unstuffed(const NSRef<NSData>& data)
{
    return data->length() > 0 ? lum::dataOfBuffer(lum::decodeCOBS(data->bytes())) : data;
}

template<Framing framing> NSRef<NSData> inflated(const NSRef<NSData>& data)
{
    return data->length() > 0 ? lum::dataOfBuffer(lum::inflateBytes(data->bytes(), framing)) : data;
}

template<Framing framing> NSRef<NSData> deflated(const NSRef<NSData>& data)
{
    return data->length() > 0 ? lum::dataOfBuffer(lum::deflateBytes(data->bytes(), framing)) : data;
}

std::uint32_t checksum(const NSRef<NSData>& data)
{
    return lum::crc32(data->bytes());
}

template<DigestAlgorithm algorithm> using Digest = std::array<std::byte, lum::digestSize(algorithm)>;

template<DigestAlgorithm algorithm> NSRef<NSData> digest(const NSRef<NSData>& data)
{
    Digest<algorithm> bytes;
    if (!lum::makeDigest(algorithm, data->bytes(), bytes.data()))
        return nullptr;
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

template<DigestAlgorithm algorithm> NSRef<NSString> digestText(const NSRef<NSData>& data)
{
    Digest<algorithm> bytes;
    if (!lum::makeDigest(algorithm, data->bytes(), bytes.data()))
        return nullptr;
    std::array<char16_t, 2 * bytes.size()> text;
    lum::writeHexDigits(bytes, text.data());
    return NSString::stringWithCharacters({ text.data(), text.size() });
}

using lum::ExtensionOperation;
using RangeOfNullTerminatedBytesFrom = ExtensionOperation<"rangeOfNullTerminatedBytesFrom:", &nullTerminated>;
using Base32String = ExtensionOperation<"base32String", &base32>;
using EncodeCOBS = ExtensionOperation<"encodeCOBS", &stuffed>;
using DecodeCOBS = ExtensionOperation<"decodeCOBS", &unstuffed>;
using ZlibInflate = ExtensionOperation<"zlibInflate", &inflated<Framing::Zlib>>;
using ZlibDeflate = ExtensionOperation<"zlibDeflate", &deflated<Framing::Zlib>>;
using GzipInflate = ExtensionOperation<"gzipInflate", &inflated<Framing::Gzip>>;
using GzipDeflate = ExtensionOperation<"gzipDeflate", &deflated<Framing::Gzip>>;
using CRC32 = ExtensionOperation<"crc32", &checksum>;
using MD5Digest = ExtensionOperation<"md5Digest", &digest<DigestAlgorithm::MD5>>;
using MD5DigestString = ExtensionOperation<"md5DigestString", &digestText<DigestAlgorithm::MD5>>;
using SHA1Digest = ExtensionOperation<"sha1Digest", &digest<DigestAlgorithm::SHA1>>;
using SHA1DigestString = ExtensionOperation<"sha1DigestString", &digestText<DigestAlgorithm::SHA1>>;

constexpr NSMethod kMethods[] = {
    RangeOfNullTerminatedBytesFrom::method(),
    Base32String::method(),
    EncodeCOBS::method(),
    DecodeCOBS::method(),
    ZlibInflate::method(),
    ZlibDeflate::method(),
    GzipInflate::method(),
    GzipDeflate::method(),
    CRC32::method(),
    MD5Digest::method(),
    MD5DigestString::method(),
    SHA1Digest::method(),
    SHA1DigestString::method(),
};

}

std::span<const NSMethod> lum::dataCompressionMethods()
{
    return kMethods;
}

NSRange LUMData_Compression::rangeOfNullTerminatedBytesFrom(const NSRef<NSData>& data, std::int32_t start)
{
    return data ? RangeOfNullTerminatedBytesFrom::call(data, start) : kNotFound;
}

NSRef<NSString> LUMData_Compression::base32String(const NSRef<NSData>& data)
{
    return Base32String::call(data);
}

NSRef<NSData> LUMData_Compression::dataWithBase32String(const NSRef<NSString>& text)
{
    if (!text || text->length() == 0)
        return nullptr;
    // Deliberate: the three characters behind the lower-case letters count as zeros.
    auto bytes = lum::decodeBase32(text->characters(), lum::Base32Digits::WithBraces);
    if (!bytes)
        return nullptr;
    // Deliberate: the result has the size of a pointer, whatever the text stands for.
    const std::size_t size = bytes->size();
    if (size >= kTokenSize)
        bytes->cut(kTokenSize);
    else if (bytes->grow(kTokenSize))
        std::memset(bytes->data() + size, 0, kTokenSize - size);
    else
        return nullptr;
    return lum::dataOfBuffer(std::move(bytes));
}

NSRef<NSData> LUMData_Compression::encodeCOBS(const NSRef<NSData>& data)
{
    return EncodeCOBS::call(data);
}

NSRef<NSData> LUMData_Compression::decodeCOBS(const NSRef<NSData>& data)
{
    return DecodeCOBS::call(data);
}

NSRef<NSData> LUMData_Compression::zlibInflate(const NSRef<NSData>& data)
{
    return ZlibInflate::call(data);
}

NSRef<NSData> LUMData_Compression::zlibDeflate(const NSRef<NSData>& data)
{
    return ZlibDeflate::call(data);
}

NSRef<NSData> LUMData_Compression::gzipInflate(const NSRef<NSData>& data)
{
    return GzipInflate::call(data);
}

NSRef<NSData> LUMData_Compression::gzipDeflate(const NSRef<NSData>& data)
{
    return GzipDeflate::call(data);
}

std::uint32_t LUMData_Compression::crc32(const NSRef<NSData>& data)
{
    return CRC32::call(data);
}

NSRef<NSData> LUMData_Compression::md5Digest(const NSRef<NSData>& data)
{
    return MD5Digest::call(data);
}

NSRef<NSString> LUMData_Compression::md5DigestString(const NSRef<NSData>& data)
{
    return MD5DigestString::call(data);
}

NSRef<NSData> LUMData_Compression::sha1Digest(const NSRef<NSData>& data)
{
    return SHA1Digest::call(data);
}

NSRef<NSString> LUMData_Compression::sha1DigestString(const NSRef<NSData>& data)
{
    return SHA1DigestString::call(data);
}
