#include "platform/proplists/binary_layout.h"

#include "platform/proplists/binary_values.h"

#include <bit>
#include <cstring>
#include <memory>

namespace platform {
namespace {

using namespace binary;

std::size_t bytesFor(std::uint64_t value)
{
    std::size_t size = 1;
    while (value >>= 8)
        ++size;
    return size;
}

}

/// Most repeated values are the same object, so they are looked up by that first.
std::uint32_t BinaryLayout::addValue(const NSObject& value, PropertyListKind kind)
{
    constexpr unsigned kAlignmentBits = 4;
    const std::size_t place = reinterpret_cast<std::uintptr_t>(&value) >> kAlignmentBits;
    Recent& recent = mRecent[place % mRecent.size()];
    if (recent.object == &value)
        return recent.number;
    appendBinaryValue(mValues.bytes(), value, kind);
    recent = { &value, addAppendedValue() };
    return recent.number;
}

std::uint32_t BinaryLayout::addAppendedValue()
{
    const std::uint32_t number = mValues.add(nextNumber());
    if (number == nextNumber())
        mObjects.push_back({ kSingle, 0, 0 });
    return number;
}

std::uint64_t BinaryLayout::referenceCount(const Object& container)
{
    return container.type == kDictionary ? 2 * container.count : container.count;
}

std::uint32_t BinaryLayout::addContainer(Type type, std::uint64_t count)
{
    mObjects.push_back({ type, count, mReferences.size() });
    mReferences.resize(mReferences.size() + referenceCount(mObjects.back()));
    return nextNumber() - 1;
}

std::span<std::uint32_t> BinaryLayout::references(std::uint32_t container)
{
    const Object& object = mObjects[container];
    return std::span(mReferences).subspan(object.references, referenceCount(object));
}

NSRef<NSData> BinaryLayout::laidOut() const
{
    const std::size_t referenceSize = bytesFor(mObjects.size());
    std::string header; // of each container
    std::size_t objectBytes = kHeaderSize + mValues.size() + mReferences.size() * referenceSize;
    for (const Object& object : mObjects)
        if (object.type != kSingle) {
            header.clear();
            appendBinaryCount(header, object.type, object.count);
            objectBytes += header.size();
        }
    const std::size_t offsetSize = offsetSizeFor(objectBytes);
    const std::size_t size = objectBytes + mObjects.size() * offsetSize + kTrailerSize;
    std::unique_ptr<std::byte, decltype(&std::free)> bytes(
        static_cast<std::byte*>(std::malloc(size)), &std::free);
    if (!bytes)
        return nullptr;
    layOutObjects(bytes.get(), objectBytes, offsetSize, referenceSize);
    layOutTrailer(bytes.get() + size - kTrailerSize, objectBytes, offsetSize, referenceSize);
    return NSData::dataWithBytesNoCopy(bytes.release(), size);
}

/// The least number of bytes; but a lone value, whose bytes serve as a fingerprint, has a power of two, as it
/// has from all other writers.
std::size_t BinaryLayout::offsetSizeFor(std::size_t largest) const
{
    const std::size_t size = bytesFor(largest);
    return mObjects.size() == 1 ? std::bit_ceil(size) : size;
}

void BinaryLayout::layOutObjects(
    std::byte* bytes, std::size_t objectBytes, std::size_t offsetSize, std::size_t referenceSize) const
{
    std::memcpy(bytes, kHeader, kHeaderSize);
    std::byte* out = bytes + kHeaderSize;
    std::byte* offset = bytes + objectBytes;
    std::string header;
    std::size_t valueIndex = 0;
    const auto append = [&](std::string_view text) {
        std::memcpy(out, text.data(), text.size());
        out += text.size();
    };
    for (const Object& object : mObjects) {
        writeInteger(offset, static_cast<std::uint64_t>(out - bytes), offsetSize);
        offset += offsetSize;
        if (object.type == kSingle) {
            append(mValues.value(valueIndex++));
            continue;
        }
        header.clear();
        appendBinaryCount(header, object.type, object.count);
        append(header);
        for (std::size_t at = 0; at < referenceCount(object); ++at, out += referenceSize)
            writeInteger(out, mReferences[object.references + at], referenceSize);
    }
}

void BinaryLayout::layOutTrailer(
    std::byte* out, std::size_t objectBytes, std::size_t offsetSize, std::size_t referenceSize) const
{
    std::memset(out, 0, kTrailerSize);
    writeInteger(out + 6, offsetSize, 1);
    writeInteger(out + 7, referenceSize, 1);
    writeInteger(out + 8, mObjects.size(), 8);
    writeInteger(out + 24, objectBytes, 8);
}

}
