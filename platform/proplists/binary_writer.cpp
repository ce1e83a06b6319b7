#include "platform/proplists/binary_writer.h"

#include "platform/proplists/binary_values.h"
#include "platform/proplists/property_list_walk.h"
#include "platform/proplists/value_table.h"

#include <array>
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

/// Numbers the objects in the order in which a walk meets them, and lays them out in that order. Equal values
/// are one object; containers are never shared, so that a reader's copies can be changed one by one.
class Writer {
public:
    NSRef<NSData> write(const NSId& propertyList)
    {
        PropertyListWalk(*this).through(propertyList);
        return laidOut();
    }

    // What the walk calls.

    void value(const NSObject& value, PropertyListKind kind) { refer(numberOfValue(value, kind)); }
    void beginArray(std::size_t count) { begin(kArray, count, count); }
    void beginDictionary(std::span<const SortedEntry> entries)
    {
        begin(kDictionary, entries.size(), 2 * entries.size());
        for (const SortedEntry& entry : entries)
            refer(numberOfValue(*entry.key, PropertyListKind::String));
    }
    void key(const NSString&) { }
    void endArray() { mNextReference.pop_back(); }
    void endDictionary() { mNextReference.pop_back(); }

private:
    struct Object {
        Type type; // kSingle for every value
        std::uint64_t count; // of a container
        std::size_t references; // where a container's begin
    };
    struct Recent {
        const NSObject* object = nullptr;
        std::uint32_t number = 0;
    };

    std::uint32_t nextNumber() const { return static_cast<std::uint32_t>(mObjects.size()); }

    void refer(std::uint32_t number)
    {
        if (!mNextReference.empty())
            mReferences[mNextReference.back()++] = number;
    }

    void begin(Type type, std::uint64_t count, std::size_t references)
    {
        refer(nextNumber());
        mNextReference.push_back(mReferences.size());
        mObjects.push_back({ type, count, mReferences.size() });
        mReferences.resize(mReferences.size() + references);
    }

    /// The number of the first equal value. Most repeated ones are the same object, so they are looked up by
    /// that first; all live as long as the walk.
    std::uint32_t numberOfValue(const NSObject& value, PropertyListKind kind)
    {
        constexpr unsigned kAlignmentBits = 4;
        const std::size_t place = reinterpret_cast<std::uintptr_t>(&value) >> kAlignmentBits;
        Recent& recent = mRecent[place % mRecent.size()];
        if (recent.object == &value)
            return recent.number;
        appendBinaryValue(mValues.bytes(), value, kind);
        const std::uint32_t number = mValues.add(nextNumber());
        if (number == nextNumber())
            mObjects.push_back({ kSingle, 0, 0 });
        recent = { &value, number };
        return number;
    }

    NSRef<NSData> laidOut()
    {
        const std::size_t referenceSize = bytesFor(mObjects.size());
        std::string header; // of each container
        std::size_t objectBytes = kHeaderSize + mValues.bytes().size() + mReferences.size() * referenceSize;
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

    /// The least number of bytes; but a lone value, whose bytes serve as a fingerprint, has a power of two,
    /// as it has from all other writers.
    std::size_t offsetSizeFor(std::size_t largest) const
    {
        const std::size_t size = bytesFor(largest);
        return mObjects.size() == 1 ? std::bit_ceil(size) : size;
    }

    void layOutObjects(
        std::byte* bytes, std::size_t objectBytes, std::size_t offsetSize, std::size_t referenceSize)
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
            const std::size_t references = object.type == kArray ? object.count : 2 * object.count;
            for (std::size_t at = 0; at < references; ++at, out += referenceSize)
                writeInteger(out, mReferences[object.references + at], referenceSize);
        }
    }

    void layOutTrailer(
        std::byte* out, std::size_t objectBytes, std::size_t offsetSize, std::size_t referenceSize) const
    {
        std::memset(out, 0, kTrailerSize);
        writeInteger(out + 6, offsetSize, 1);
        writeInteger(out + 7, referenceSize, 1);
        writeInteger(out + 8, mObjects.size(), 8);
        writeInteger(out + 24, objectBytes, 8);
    }

    std::vector<Object> mObjects;
    ValueTable mValues;
    std::vector<std::uint32_t> mReferences; // of all containers, in the order of these
    std::vector<std::size_t> mNextReference; // of each open container
    std::array<Recent, 512> mRecent;
};

}

NSRef<NSData> writeBinaryPropertyList(const NSId& propertyList)
{
    return Writer().write(propertyList);
}

}
