#pragma once

#include "LUMPlatform/NSData.h"
#include "platform/proplists/binary_objects.h"

#include <memory>
#include <optional>

namespace platform {

/// A keyed archive as a file: its top, its slots, and what stands in them. Throws PropertyListFault for what
/// is wrong in the file.
class KeyedArchive {
public:
    using Object = BinaryObjects::Object;

    /// Null when the bytes are no keyed archive, in binary or in XML. Raises
    /// NSInvalidUnarchiveOperationException when they are beyond the limits.
    static std::unique_ptr<KeyedArchive> archiveOfData(
        const NSRef<NSData>& data, const NSDecodingLimits& limits);

    BinaryObjects& objects() { return mObjects; }
    /// In bytes.
    std::size_t size() const { return mData->length(); }
    const Object& top() const { return mTop; }
    /// The number of the object in a slot.
    std::uint64_t slot(std::uint32_t uid) const;

    /// The value under a key of a dictionary, searched from `cursor` on, which is then behind it: values are
    /// mostly asked for in the order in which they were written.
    std::optional<std::uint64_t> find(
        const Object& dictionary, std::u16string_view key, std::uint64_t& cursor) const;
    std::optional<std::uint64_t> find(const Object& dictionary, std::u16string_view key) const;

private:
    explicit KeyedArchive(const NSRef<NSData>& data);
    bool readFrame();

    NSRef<NSData> mData;
    BinaryObjects mObjects;
    Object mTop {};
    Object mSlots {};
};

}
