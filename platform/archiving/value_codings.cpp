// The platform's classes that archive themselves as any other class does.
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSString.h"
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
    NSUInteger length = 0;
    const void* bytes = coder.allowsKeyedCoding() ? coder.decodeBytesForKey("NS.data", &length)
                                                  : coder.decodeBytesWithReturnedLength(&length);
    return NSMutableData::dataWithBytes(bytes, length);
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
    };
}

}
