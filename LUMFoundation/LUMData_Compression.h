#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSString.h"

#include <cstdint>

/// What data can be turned into and back: Base32 text, frames of stuffed bytes, compressed streams, checksums
/// and digests.
///
/// Each operation looks at the bytes of `data` alone, never changes it, and makes a result of its own or,
/// where it says so, answers `data` itself. A failure is null, with no error and nothing logged. Null for
/// `data` gives null, 0, or "not found". Nothing is kept between calls. Time is linear in the bytes read and
/// written. Threads: any, as long as nobody changes the data meanwhile.
///
///     auto text = NSData::dataWithBytes("hello", 5);
///     auto packed = LUMData_Compression::gzipDeflate(text);
///     auto again = LUMData_Compression::gzipInflate(packed);
///     assert(again->isEqualToData(text));
///     assert(LUMData_Compression::crc32(text) == 0x3610a686);
namespace LUMData_Compression {

/// Where the bytes from `start` up to the next zero byte are, that byte not included: a length of 0 means
/// that it is the one at `start`. {NSNotFound, 0} when there is no zero byte, and when `start` is negative or
/// not less than the length.
/// Selector: rangeOfNullTerminatedBytesFrom:
LUM_EXPORT NSRange rangeOfNullTerminatedBytesFrom(const NSRef<NSData>& data, std::int32_t start);

/// The bytes in Base32: the upper-case alphabet of RFC 4648 without padding, (8 * length + 4) / 5 characters.
/// Empty for no bytes.
/// Selector: base32String
LUM_EXPORT NSRef<NSString> base32String(const NSRef<NSData>& data);

/// A token of eight bytes (the size of a pointer) from its Base32 text.
///
/// Always that many bytes: longer data is cut, shorter data filled up with zeros. Letters count in either
/// case, and so do '{', '|' and '}', which stand for 0 as 'A' does. Null for null, for the empty text, for a
/// length of 1, 3 or 6 modulo 8, for any other character, padding included, and when bits that no byte uses
/// are not 0.
///
/// To decode data of any length, and only what base32String() writes, use LUMData_Base32::wholeData().
/// Selector (of the class): dataWithBase32String:
LUM_EXPORT NSRef<NSData> dataWithBase32String(const NSRef<NSString>& text);

/// One frame of consistent-overhead byte stuffing: the bytes in blocks without a zero, then the zero byte
/// that ends the frame. It takes length + length / 254 + 2 bytes at most. `data` itself when empty; null when
/// there is not enough memory.
/// Selector: encodeCOBS
LUM_EXPORT NSRef<NSData> encodeCOBS(const NSRef<NSData>& data);

/// What the blocks of a frame stand for.
///
/// The zero that each block but a full one stands for is never left out, not even behind the last block, and
/// the delimiter of the frame counts as an empty block. So what encodeCOBS() made comes back with two zero
/// bytes at its end, for the caller to drop. A block that breaks off gives the bytes that are there. `data`
/// itself when empty; null when there is not enough memory.
/// Selector: decodeCOBS
LUM_EXPORT NSRef<NSData> decodeCOBS(const NSRef<NSData>& data);

/// The data that a zlib stream (RFC 1950) stands for.
///
/// `data` itself when empty. Null when it is no such stream, gzip included, when it is damaged or breaks off,
/// from 4 GiB on, and when there is not enough memory. What follows the stream is left alone. A stream can
/// stand for a thousand times its size, so ask before you inflate what strangers sent.
/// Selector: zlibInflate
LUM_EXPORT NSRef<NSData> zlibInflate(const NSRef<NSData>& data);

/// A zlib stream (RFC 1950) for the bytes, at zlib's default level. `data` itself when empty; null from 4 GiB
/// on and when there is not enough memory.
/// Selector: zlibDeflate
LUM_EXPORT NSRef<NSData> zlibDeflate(const NSRef<NSData>& data);

/// As zlibInflate(), for gzip (RFC 1952) and zlib streams alike; of a gzip file with several members, the
/// first.
/// Selector: gzipInflate
LUM_EXPORT NSRef<NSData> gzipInflate(const NSRef<NSData>& data);

/// As zlibDeflate(), but a gzip stream (RFC 1952), without a name or a time: a gzip file.
/// Selector: gzipDeflate
LUM_EXPORT NSRef<NSData> gzipDeflate(const NSRef<NSData>& data);

/// The CRC-32 of zlib, gzip and IEEE 802.3; 0 for no bytes.
/// Selector: crc32
LUM_EXPORT std::uint32_t crc32(const NSRef<NSData>& data);

/// The MD5 digest, 16 bytes: good as a checksum, no protection against anybody.
/// Selector: md5Digest
LUM_EXPORT NSRef<NSData> md5Digest(const NSRef<NSData>& data);
/// The same as 32 lower-case hexadecimal digits.
/// Selector: md5DigestString
LUM_EXPORT NSRef<NSString> md5DigestString(const NSRef<NSData>& data);

/// The SHA-1 digest, 20 bytes: good as a checksum, no protection against anybody.
/// Selector: sha1Digest
LUM_EXPORT NSRef<NSData> sha1Digest(const NSRef<NSData>& data);
/// The same as 40 lower-case hexadecimal digits.
/// Selector: sha1DigestString
LUM_EXPORT NSRef<NSString> sha1DigestString(const NSRef<NSData>& data);

}
