#pragma once

#include "LUMPlatform/NSData.h"
#include "platform/proplists/binary_format.h"
#include "platform/proplists/property_list_kind.h"
#include "platform/proplists/value_table.h"

#include <array>
#include <span>
#include <vector>

namespace platform {

/// The objects of a binary property list while they are gathered: numbered in the order in which they are
/// added, and laid out in that order. Object 0 is the top. Equal values are one object; containers are never
/// shared, so that a reader's copies can be changed one by one.
class BinaryLayout {
public:
    std::uint32_t nextNumber() const { return static_cast<std::uint32_t>(mObjects.size()); }

    /// The number of a value, or of an equal one that is there. The value must live as long as this.
    std::uint32_t addValue(const NSObject& value, PropertyListKind kind);
    /// Where the bytes of a value are appended, before addAppendedValue() is called.
    std::string& valueBytes() { return mValues.bytes(); }
    std::uint32_t addAppendedValue();

    /// Adds a container of elements, or of pairs. Its references, all keys before all values, are filled in
    /// by references(), at any time.
    std::uint32_t addContainer(binary::Type type, std::uint64_t count);
    std::span<std::uint32_t> references(std::uint32_t container);

    /// The file. Null when there is not enough memory for it.
    NSRef<NSData> laidOut() const;

private:
    struct Object {
        binary::Type type; // kSingle for every value
        std::uint64_t count; // of a container
        std::size_t references; // where a container's begin
    };
    struct Recent {
        const NSObject* object = nullptr;
        std::uint32_t number = 0;
    };

    static std::uint64_t referenceCount(const Object& container);
    std::size_t offsetSizeFor(std::size_t largest) const;
    void layOutObjects(
        std::byte* bytes, std::size_t objectBytes, std::size_t offsetSize, std::size_t referenceSize) const;
    void layOutTrailer(
        std::byte* out, std::size_t objectBytes, std::size_t offsetSize, std::size_t referenceSize) const;

    std::vector<Object> mObjects;
    ValueTable mValues;
    std::vector<std::uint32_t> mReferences; // of all containers, in the order of these
    std::array<Recent, 512> mRecent;
};

}
