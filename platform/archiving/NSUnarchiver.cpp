#include "LUMPlatform/NSUnarchiver.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/decoding_calls.h"
#include "platform/archiving/sequential_content.h"
#include "platform/archiving/sequential_scalars.h"
#include "platform/archiving/sequential_values.h"

const NSStringConstant NSInconsistentArchiveException("NSInconsistentArchiveException");

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"isAtEnd", &NSUnarchiver::isAtEnd>(),
    NSMethodOf<"decodeClassName:asClassName:", &NSUnarchiver::decodeClassName>(),
};

}

const NSClass& NSUnarchiver::classObject()
{
    static const NSClass& type = NSClass::define("NSUnarchiver", &NSCoder::classObject(), kMethods);
    return type;
}

NSUnarchiver::NSUnarchiver(std::unique_ptr<platform::SequentialReader> reader, const NSDecodingLimits& limits)
    : mReader(std::move(reader)), mLimits(limits), mCalls(std::make_unique<platform::DecodingCalls>())
{
}

NSUnarchiver::~NSUnarchiver() = default;

NSId NSUnarchiver::unarchiveObjectWithData(const NSRef<NSData>& data)
{
    return initForReadingWithData(data)->decodeObject();
}

NSId NSUnarchiver::unarchiveObjectWithFile(const NSRef<NSString>& path)
{
    const auto data = NSData::dataWithContentsOfFile(path);
    return data ? unarchiveObjectWithData(data) : nullptr;
}

NSRef<NSUnarchiver> NSUnarchiver::initForReadingWithData(
    const NSRef<NSData>& data, const NSDecodingLimits& limits)
{
    auto reader = std::make_unique<platform::SequentialReader>(data);
    if (data->length() > limits.bytes)
        throw NSException(NSInvalidUnarchiveOperationException, "the archive is beyond the limits");
    return NSMake<NSUnarchiver>(std::move(reader), limits);
}

bool NSUnarchiver::isAtEnd() const
{
    return mReader->isAtEnd();
}

void NSUnarchiver::decodeClassName(const NSRef<NSString>& nameInArchive, const NSRef<NSString>& trueName)
{
    if (!nameInArchive || !trueName)
        throw NSException(NSInvalidArgumentException, "decodeClassName:asClassName: a name is null");
    mTrueNames[nameInArchive->utf8()] = trueName->utf8();
}

NSId NSUnarchiver::nextObject()
{
    return mCalls->serve([&] {
        if (mReader->readSharedText() != "@")
            mReader->fault("there is no object");
        return readObject();
    });
}

const void* NSUnarchiver::decodeBytesWithReturnedLength(NSUInteger* length)
{
    const auto bytes = mCalls->serve([&] { return platform::readBlock(*mReader); });
    if (length)
        *length = bytes.size();
    return bytes.data();
}

void NSUnarchiver::decodeGroup(std::span<const char* const> types, std::span<NSResult> results)
{
    mCalls->serve([&] {
        const std::string_view written = mReader->readSharedText();
        if (written.size() != types.size())
            throw NSException(NSInvalidUnarchiveOperationException,
                "the archive holds values of types \"" + std::string(written) + "\" where "
                    + std::to_string(types.size()) + " are asked for");
        for (std::size_t at = 0; at < types.size(); ++at) {
            if (written[at] == '@' && types[at][0] == '@')
                results[at].take(readObject());
            else
                results[at].set(platform::readScalar(*mReader, written[at], types[at]));
        }
    });
}

NSId NSUnarchiver::readObject()
{
    using Reference = platform::SequentialReader::Reference;
    const Reference reference = mReader->readReference();
    if (reference.kind == Reference::Null)
        return nullptr;
    if (reference.kind == Reference::Known)
        return mReader->object(reference.number);

    std::string_view name = mReader->readClass();
    if (const auto found = mTrueNames.find(name); found != mTrueNames.end())
        name = found->second;
    const platform::ClassCoding* coding = platform::classCodingNamed(name);
    if (!coding)
        throw NSException(NSInvalidUnarchiveOperationException,
            "the archive holds an object of class \"" + std::string(name) + "\", which is not registered");
    if (mDepth >= mLimits.depth || reference.number >= mLimits.objects)
        throw NSException(NSInvalidUnarchiveOperationException, "the archive is beyond the limits");
    const platform::NestingDepth depth(mDepth);
    const std::size_t outer = std::exchange(mMaking, reference.number);
    NSId object = makeObject(*coding);
    if (mCalls->hasFailed())
        mReader->fault("an object was made without what it could not read");
    mMaking = outer;
    mReader->setObject(reference.number, object);
    mReader->readEnd();
    return object;
}

NSId NSUnarchiver::makeObject(const platform::ClassCoding& coding)
{
    if (coding.kind == platform::CodedKind::Custom)
        return coding.functions.make(*this);
    return platform::decodeSequentially(*this, *mReader, coding.kind);
}

void NSUnarchiver::announce(const NSId& object, Undo undo)
{
    if (mDepth == 0 || !object)
        return;
    mReader->setObject(mMaking, object);
    mCalls->add(object, undo);
}

void NSUnarchiver::giveUp()
{
    mCalls->fail();
}
