#include "LUMPlatform/NSArchiver.h"

#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/class_codings.h"
#include "platform/archiving/nesting_depth.h"
#include "platform/archiving/sequential_content.h"
#include "platform/archiving/sequential_scalars.h"
#include "platform/archiving/sequential_values.h"

namespace {

constexpr NSMethod kMethods[] = { NSMethodOf<"archiverData", &NSArchiver::archiverData>() };

}

const NSClass& NSArchiver::classObject()
{
    static const NSClass& type = NSClass::define("NSArchiver", &NSCoder::classObject(), kMethods);
    return type;
}

NSArchiver::NSArchiver(std::unique_ptr<platform::SequentialWriter> writer) : mWriter(std::move(writer)) { }

NSArchiver::~NSArchiver() = default;

NSRef<NSData> NSArchiver::archivedDataWithRootObject(const NSId& root)
{
    auto archiver = initForWritingWithMutableData(NSMutableData::data());
    archiver->encodeObject(root);
    return archiver->archiverData();
}

bool NSArchiver::archiveRootObject(const NSId& root, const NSRef<NSString>& path, NSRef<NSError>* error)
{
    return archivedDataWithRootObject(root)->writeToFile(path, true, error);
}

NSRef<NSArchiver> NSArchiver::initForWritingWithMutableData(const NSRef<NSMutableData>& data)
{
    if (!data)
        throw NSException(NSInvalidArgumentException, "initForWritingWithMutableData: the data is null");
    return NSMake<NSArchiver>(std::make_unique<platform::SequentialWriter>(data));
}

NSRef<NSMutableData> NSArchiver::archiverData() const
{
    return mWriter->data();
}

/// What an exception went through stands in the archive by half.
template<typename Write> void NSArchiver::guarded(const Write& write)
{
    if (mHasFailed)
        throw NSException(
            NSInvalidArchiveOperationException, "the archive is incomplete since an exception before");
    try {
        write();
    } catch (...) {
        mHasFailed = true;
        throw;
    }
}

void NSArchiver::encodeObject(const NSId& object)
{
    guarded([&] {
        mWriter->writeSharedText("@");
        writeObject(object);
    });
}

void NSArchiver::encodeBytes(const void* bytes, NSUInteger length)
{
    guarded([&] { platform::writeBlock(*mWriter, bytes, length); });
}

void NSArchiver::encodeGroup(std::span<const NSArgument> values)
{
    std::string types;
    for (const NSArgument& value : values)
        types += value.code();
    guarded([&] {
        mWriter->writeSharedText(types);
        for (const NSArgument& value : values) {
            if (value.isObject())
                writeObject(NSShare(value.object()));
            else
                platform::writeScalar(*mWriter, value);
        }
    });
}

void NSArchiver::writeObject(const NSId& object)
{
    if (!object) {
        mWriter->writeTag(platform::sequential::kNull);
        return;
    }
    if (mWriter->writeReference(object))
        return;
    if (mDepth >= NSDecodingLimits().depth)
        throw NSException(NSInvalidArgumentException, "objects are nested too deep to be archived");
    const platform::ClassCoding& coding = platform::requiredClassCoding(*object);
    const platform::NestingDepth depth(mDepth);
    mWriter->writeTag(platform::sequential::kNew);
    mWriter->writeClass(*coding.type);
    if (coding.kind == platform::CodedKind::Custom)
        coding.functions.encode(*object, *this);
    else
        platform::encodeSequentially(*this, *mWriter, coding.kind, *object);
    mWriter->writeTag(platform::sequential::kEnd);
}
