#include "platform/archiving/keyed_archive.h"

#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/keyed_format.h"
#include "platform/proplists/binary_reader.h"
#include "platform/proplists/binary_writer.h"
#include "platform/proplists/property_list_fault.h"

namespace platform {
namespace {

/// A property list as such takes no more room than its bytes, so these bound it. The limits of the caller are
/// for the archive.
constexpr NSDecodingLimits kOfTheList { ~NSUInteger { 0 }, ~NSUInteger { 0 } };

void requireWithin(NSUInteger limit, NSUInteger count, const char* unit)
{
    if (count > limit)
        throw NSException(NSInvalidUnarchiveOperationException,
            "the archive has more than " + std::to_string(limit) + unit);
}

}

KeyedArchive::KeyedArchive(const NSRef<NSData>& data) : mData(data), mObjects(data->bytes(), kOfTheList) { }

std::unique_ptr<KeyedArchive> KeyedArchive::archiveOfData(
    const NSRef<NSData>& data, const NSDecodingLimits& limits)
{
    if (!data)
        return nullptr;
    requireWithin(limits.bytes, data->length(), " bytes");
    try {
        auto binary = NSData::dataWithData(data);
        if (!isBinaryPropertyList(binary->bytes())) {
            // The other forms are rare; they are read as the binary ones they could have been.
            const auto list = NSPropertyListSerialization::propertyListWithData(
                binary, NSPropertyListImmutable, nullptr, nullptr, kOfTheList);
            binary = list ? writeBinaryPropertyList(list) : nullptr;
        }
        if (!binary)
            return nullptr;
        auto archive = std::unique_ptr<KeyedArchive>(new KeyedArchive(binary));
        if (!archive->readFrame())
            return nullptr;
        requireWithin(limits.objects, archive->objects().count(), " objects");
        return archive;
    } catch (const PropertyListFault&) {
        return nullptr;
    }
}

/// Whether the four entries of every keyed archive are there.
bool KeyedArchive::readFrame()
{
    const Object frame = mObjects.object(mObjects.top());
    if (frame.type != binary::kDictionary)
        return false;
    const auto archiver = find(frame, keyed::kArchiverKey);
    const auto version = find(frame, keyed::kVersionKey);
    const auto top = find(frame, keyed::kTopKey);
    const auto slots = find(frame, keyed::kObjectsKey);
    if (!archiver || !version || !top || !slots)
        return false;
    const Object number = mObjects.object(*version);
    mTop = mObjects.object(*top);
    mSlots = mObjects.object(*slots);
    return mObjects.isText(mObjects.object(*archiver), keyed::kArchiver) && number.type == binary::kInteger
        && mObjects.integer(number).bits == keyed::kVersion && mTop.type == binary::kDictionary
        && mSlots.type == binary::kArray;
}

std::uint64_t KeyedArchive::slot(std::uint32_t uid) const
{
    if (uid >= mSlots.count)
        throw PropertyListFault(
            "slot " + std::to_string(uid) + " is none of the " + std::to_string(mSlots.count));
    return mObjects.reference(mSlots, uid);
}

std::optional<std::uint64_t> KeyedArchive::find(
    const Object& dictionary, std::u16string_view key, std::uint64_t& cursor) const
{
    for (std::uint64_t step = 0; step < dictionary.count; ++step) {
        if (cursor >= dictionary.count)
            cursor = 0;
        const std::uint64_t at = cursor++;
        if (mObjects.isText(mObjects.object(mObjects.reference(dictionary, at)), key))
            return mObjects.reference(dictionary, dictionary.count + at);
    }
    return std::nullopt;
}

std::optional<std::uint64_t> KeyedArchive::find(const Object& dictionary, std::u16string_view key) const
{
    std::uint64_t cursor = 0;
    return find(dictionary, key, cursor);
}

}
