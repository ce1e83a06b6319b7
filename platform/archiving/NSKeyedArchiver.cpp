#include "LUMPlatform/NSKeyedArchiver.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiverDelegate.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/keyed_encoder.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"setDelegate:", &NSKeyedArchiver::setDelegate>(),
    NSMethodOf<"delegate", &NSKeyedArchiver::delegate>(),
    NSMethodOf<"finishEncoding", &NSKeyedArchiver::finishEncoding>(),
};

constexpr const char* kRoot = "root";

const NSString* required(const NSRef<NSString>& key)
{
    if (!key)
        throw NSException(NSInvalidArgumentException, "a value cannot be archived under a null key");
    return key.get();
}

NSRef<NSData> dataOf(const void* bytes, NSUInteger length)
{
    auto data = NSData::dataWithBytes(bytes, length);
    if (!data)
        throw NSException(NSMallocException, "there is no memory for the bytes to archive");
    return data;
}

}

NSId NSKeyedArchiverDelegate::archiverWillEncodeObject(NSKeyedArchiver&, const NSId& object)
{
    return object;
}
void NSKeyedArchiverDelegate::archiverDidEncodeObject(NSKeyedArchiver&, const NSId&) { }
void NSKeyedArchiverDelegate::archiverWillFinish(NSKeyedArchiver&) { }
void NSKeyedArchiverDelegate::archiverDidFinish(NSKeyedArchiver&) { }

const NSClass& NSKeyedArchiver::classObject()
{
    static const NSClass& type = NSClass::define("NSKeyedArchiver", &NSCoder::classObject(), kMethods);
    return type;
}

NSKeyedArchiver::NSKeyedArchiver(const NSRef<NSMutableData>& data)
    : mEncoder(std::make_unique<platform::KeyedEncoder>(*this)), mData(data)
{
}

NSKeyedArchiver::~NSKeyedArchiver() = default;

NSRef<NSData> NSKeyedArchiver::archivedDataWithRootObject(const NSId& root)
{
    auto archiver = NSMake<NSKeyedArchiver>(nullptr);
    archiver->encodeObjectForKey(root, kRoot);
    return archiver->mEncoder->finish();
}

bool NSKeyedArchiver::archiveRootObject(const NSId& root, const NSRef<NSString>& path, NSRef<NSError>* error)
{
    const auto data = archivedDataWithRootObject(root);
    if (!data)
        throw NSException(NSMallocException, "there is no memory for the archive");
    return data->writeToFile(path, true, error);
}

NSRef<NSKeyedArchiver> NSKeyedArchiver::initForWritingWithMutableData(const NSRef<NSMutableData>& data)
{
    if (!data)
        throw NSException(NSInvalidArgumentException, "initForWritingWithMutableData: the data is null");
    return NSMake<NSKeyedArchiver>(data);
}

void NSKeyedArchiver::setDelegate(const NSRef<NSKeyedArchiverDelegate>& delegate)
{
    mEncoder->setDelegate(delegate);
}

NSRef<NSKeyedArchiverDelegate> NSKeyedArchiver::delegate() const
{
    return mEncoder->delegate();
}

void NSKeyedArchiver::finishEncoding()
{
    if (mEncoder->isFinished())
        return;
    const auto archive = mEncoder->finish();
    if (!archive)
        throw NSException(NSMallocException, "there is no memory for the archive");
    mData->appendData(archive);
}

bool NSKeyedArchiver::allowsKeyedCoding() const
{
    return true;
}

void NSKeyedArchiver::encodeObjectForKey(const NSId& object, const NSRef<NSString>& key)
{
    mEncoder->encodeObject(object, required(key));
}

void NSKeyedArchiver::encodeBool(bool value, const NSRef<NSString>& key)
{
    mEncoder->encodeValue(
        *NSNumber::numberWithBool(value), platform::PropertyListKind::Number, required(key));
}

void NSKeyedArchiver::encodeInt64(std::int64_t value, const NSRef<NSString>& key)
{
    mEncoder->encodeInteger(value, required(key));
}

void NSKeyedArchiver::encodeFloat(float value, const NSRef<NSString>& key)
{
    mEncoder->encodeValue(
        *NSNumber::numberWithFloat(value), platform::PropertyListKind::Number, required(key));
}

void NSKeyedArchiver::encodeDouble(double value, const NSRef<NSString>& key)
{
    mEncoder->encodeValue(
        *NSNumber::numberWithDouble(value), platform::PropertyListKind::Number, required(key));
}

void NSKeyedArchiver::encodeBytesForKey(const void* bytes, NSUInteger length, const NSRef<NSString>& key)
{
    mEncoder->encodeValue(*dataOf(bytes, length), platform::PropertyListKind::Data, required(key));
}

void NSKeyedArchiver::encodeObject(const NSId& object)
{
    mEncoder->encodeObject(object, nullptr);
}

void NSKeyedArchiver::encodeBytes(const void* bytes, NSUInteger length)
{
    mEncoder->encodeValue(*dataOf(bytes, length), platform::PropertyListKind::Data, nullptr);
}

void NSKeyedArchiver::encodeGroup(std::span<const NSArgument> values)
{
    for (const NSArgument& value : values) {
        switch (value.kind()) {
        case '@':
            mEncoder->encodeObject(NSShare(value.object()), nullptr);
            break;
        case 'f':
            mEncoder->encodeValue(
                *NSNumber::numberWithFloat(value.as<float>()), platform::PropertyListKind::Number, nullptr);
            break;
        case 'd':
            mEncoder->encodeValue(
                *NSNumber::numberWithDouble(value.as<double>()), platform::PropertyListKind::Number, nullptr);
            break;
        case 'Q':
            mEncoder->encodeValue(*NSNumber::numberWithUnsignedLongLong(value.as<std::uint64_t>()),
                platform::PropertyListKind::Number, nullptr);
            break;
        case ':':
        case '^':
        case '#':
        case '{':
            throw NSException(NSInvalidArgumentException,
                std::string("values of type ") + value.code() + " cannot be archived");
        default:
            mEncoder->encodeInteger(value.as<std::int64_t>(), nullptr);
        }
    }
}
