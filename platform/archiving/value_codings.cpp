// The platform's classes that archive themselves as any other class does.
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSURL.h"
#include "LUMPlatform/NSUUID.h"
#include "platform/archiving/class_codings.h"

namespace platform {
namespace {

void encodeDate(const NSObject& object, NSCoder& coder)
{
    const double seconds = static_cast<const NSDate&>(object).timeIntervalSinceReferenceDate();
    if (coder.allowsKeyedCoding())
        coder.encodeDouble(seconds, "NS.time");
    else
        coder.encodeValuesOfObjCTypes(seconds);
}

NSId makeDate(NSCoder& coder)
{
    double seconds = 0;
    if (coder.allowsKeyedCoding())
        seconds = coder.decodeDoubleForKey("NS.time");
    else
        coder.decodeValuesOfObjCTypes(seconds);
    return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds);
}

std::span<const unsigned char> bytesOf(NSCoder& coder, const char* key)
{
    NSUInteger length = 0;
    const void* bytes = coder.allowsKeyedCoding() ? coder.decodeBytesForKey(key, &length)
                                                  : coder.decodeBytesWithReturnedLength(&length);
    return { static_cast<const unsigned char*>(bytes), length };
}

void encodeMutableData(const NSObject& object, NSCoder& coder)
{
    const auto bytes = static_cast<const NSData&>(object).bytes();
    if (coder.allowsKeyedCoding())
        coder.encodeBytesForKey(bytes.data(), bytes.size(), "NS.data");
    else
        coder.encodeBytes(bytes.data(), bytes.size());
}

NSId makeMutableData(NSCoder& coder)
{
    const auto bytes = bytesOf(coder, "NS.data");
    return NSMutableData::dataWithBytes(bytes.data(), bytes.size());
}

void encodeUrl(const NSObject& object, NSCoder& coder)
{
    const auto& url = static_cast<const NSURL&>(object);
    if (coder.allowsKeyedCoding()) {
        coder.encodeObjectForKey(url.baseURL(), "NS.base");
        coder.encodeObjectForKey(url.relativeString(), "NS.relative");
    } else
        coder.encodeValuesOfObjCTypes(url.baseURL(), url.relativeString());
}

NSId makeUrl(NSCoder& coder)
{
    NSRef<NSURL> base;
    NSRef<NSString> text;
    if (coder.allowsKeyedCoding()) {
        base = coder.decodeObjectForKey<NSURL>("NS.base");
        text = coder.decodeObjectForKey<NSString>("NS.relative");
    } else
        coder.decodeValuesOfObjCTypes(base, text);
    auto url = NSURL::URLWithString(text, base);
    if (!url)
        throw NSException(NSInvalidUnarchiveOperationException, "a URL of the archive is none");
    return url;
}

constexpr NSUInteger kUuidLength = 16;

void encodeUuid(const NSObject& object, NSCoder& coder)
{
    unsigned char bytes[kUuidLength];
    static_cast<const NSUUID&>(object).getUUIDBytes(bytes);
    if (coder.allowsKeyedCoding())
        coder.encodeBytesForKey(bytes, kUuidLength, "NS.uuidbytes");
    else
        coder.encodeBytes(bytes, kUuidLength);
}

NSId makeUuid(NSCoder& coder)
{
    const auto bytes = bytesOf(coder, "NS.uuidbytes");
    if (bytes.size() != kUuidLength)
        throw NSException(
            NSInvalidUnarchiveOperationException, "a unique identifier of the archive has not 16 bytes");
    return NSUUID::initWithUUIDBytes(bytes.data());
}

void encodeNull(const NSObject&, NSCoder&) { }

NSId makeNull(NSCoder&)
{
    return NSNull::null();
}

}

std::vector<ClassCoding> valueCodings()
{
    return {
        { &NSDate::classObject(), CodedKind::Custom, { encodeDate, makeDate } },
        { &NSMutableData::classObject(), CodedKind::Custom, { encodeMutableData, makeMutableData } },
        { &NSNull::classObject(), CodedKind::Custom, { encodeNull, makeNull } },
        { &NSURL::classObject(), CodedKind::Custom, { encodeUrl, makeUrl } },
        { &NSUUID::classObject(), CodedKind::Custom, { encodeUuid, makeUuid } },
    };
}

}
