#include "LUMPlatform/NSKeyedUnarchiver.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/keyed_decoder.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"setDelegate:", &NSKeyedUnarchiver::setDelegate>(),
    NSMethodOf<"delegate", &NSKeyedUnarchiver::delegate>(),
    NSMethodOf<"setClass:forClassName:", &NSKeyedUnarchiver::setClass>(),
    NSMethodOf<"finishDecoding", &NSKeyedUnarchiver::finishDecoding>(),
};

constexpr const char* kRoot = "root";

const NSString* required(const NSRef<NSString>& key)
{
    if (!key)
        throw NSException(NSInvalidArgumentException, "an archive has no value under a null key");
    return key.get();
}

const void* pointerTo(std::span<const std::byte> bytes, NSUInteger* length)
{
    if (length)
        *length = bytes.size();
    return bytes.data();
}

}

const NSClass* NSKeyedUnarchiverDelegate::unarchiverCannotDecodeObjectOfClassName(
    NSKeyedUnarchiver&, const NSRef<NSString>&, const NSRef<NSArray>&)
{
    return nullptr;
}
NSId NSKeyedUnarchiverDelegate::unarchiverDidDecodeObject(NSKeyedUnarchiver&, const NSId& object)
{
    return object;
}
void NSKeyedUnarchiverDelegate::unarchiverWillFinish(NSKeyedUnarchiver&) { }
void NSKeyedUnarchiverDelegate::unarchiverDidFinish(NSKeyedUnarchiver&) { }

const NSClass& NSKeyedUnarchiver::classObject()
{
    static const NSClass& type = NSClass::define("NSKeyedUnarchiver", &NSCoder::classObject(), kMethods);
    return type;
}

NSKeyedUnarchiver::NSKeyedUnarchiver(std::unique_ptr<platform::KeyedDecoder> decoder)
    : mDecoder(std::move(decoder))
{
    mDecoder->setUnarchiver(*this);
}

NSKeyedUnarchiver::~NSKeyedUnarchiver() = default;

NSId NSKeyedUnarchiver::unarchiveObjectWithData(const NSRef<NSData>& data)
{
    auto unarchiver = initForReadingWithData(data);
    NSId root = unarchiver->decodeObjectForKey(kRoot);
    unarchiver->finishDecoding();
    return root;
}

NSId NSKeyedUnarchiver::unarchiveObjectWithFile(const NSRef<NSString>& path)
{
    const auto data = NSData::dataWithContentsOfFile(path);
    return data ? unarchiveObjectWithData(data) : nullptr;
}

NSRef<NSKeyedUnarchiver> NSKeyedUnarchiver::initForReadingWithData(
    const NSRef<NSData>& data, const NSDecodingLimits& limits)
{
    auto archive = platform::KeyedArchive::archiveOfData(data, limits);
    if (!archive)
        throw NSException(NSInvalidArgumentException, "the data is no keyed archive");
    return NSMake<NSKeyedUnarchiver>(std::make_unique<platform::KeyedDecoder>(std::move(archive), limits));
}

void NSKeyedUnarchiver::setDelegate(const NSRef<NSKeyedUnarchiverDelegate>& delegate)
{
    mDecoder->setDelegate(delegate);
}

NSRef<NSKeyedUnarchiverDelegate> NSKeyedUnarchiver::delegate() const
{
    return mDecoder->delegate();
}

void NSKeyedUnarchiver::setClass(const NSClass& type, const NSRef<NSString>& name)
{
    if (!name)
        throw NSException(NSInvalidArgumentException, "setClass:forClassName: the name is null");
    mDecoder->setClass(type, name);
}

void NSKeyedUnarchiver::finishDecoding()
{
    mDecoder->finish();
}

bool NSKeyedUnarchiver::allowsKeyedCoding() const
{
    return true;
}

bool NSKeyedUnarchiver::containsValueForKey(const NSRef<NSString>& key) const
{
    return mDecoder->contains(required(key));
}

NSId NSKeyedUnarchiver::objectForKey(const NSRef<NSString>& key)
{
    return mDecoder->object(required(key));
}

bool NSKeyedUnarchiver::decodeBoolForKey(const NSRef<NSString>& key)
{
    return mDecoder->truth(required(key));
}

std::int64_t NSKeyedUnarchiver::decodeInt64ForKey(const NSRef<NSString>& key)
{
    return platform::wholeAs(mDecoder->integer(required(key)), 'q').as<std::int64_t>();
}

double NSKeyedUnarchiver::decodeDoubleForKey(const NSRef<NSString>& key)
{
    return mDecoder->real(required(key));
}

const void* NSKeyedUnarchiver::decodeBytesForKey(const NSRef<NSString>& key, NSUInteger* length)
{
    return pointerTo(mDecoder->bytes(required(key)), length);
}

NSId NSKeyedUnarchiver::nextObject()
{
    return mDecoder->object(nullptr);
}

const void* NSKeyedUnarchiver::decodeBytesWithReturnedLength(NSUInteger* length)
{
    return pointerTo(mDecoder->bytes(nullptr), length);
}

void NSKeyedUnarchiver::decodeGroup(std::span<const char* const> types, std::span<NSResult> results)
{
    for (std::size_t at = 0; at < types.size(); ++at) {
        const char type = types[at][0];
        if (type == '@')
            results[at].take(mDecoder->object(nullptr));
        else if (platform::isRealType(type))
            results[at].set(NSArgument::of(mDecoder->real(nullptr)).convertedTo(types[at]));
        else if (platform::isWholeType(type))
            results[at].set(platform::wholeAs(mDecoder->integer(nullptr), type));
        else
            throw NSException(NSInvalidArgumentException,
                std::string("values of type ") + types[at] + " cannot be archived");
    }
}

void NSKeyedUnarchiver::announce(const NSId& object, Undo undo)
{
    mDecoder->announce(object, undo);
}

void NSKeyedUnarchiver::giveUp()
{
    mDecoder->giveUp();
}
