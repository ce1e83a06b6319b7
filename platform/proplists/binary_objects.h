#pragma once

#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSObject.h"
#include "platform/proplists/binary_format.h"

#include <span>
#include <string>
#include <string_view>

namespace platform {

/// The objects of a binary property list, each by its number and without those it refers to.
///
/// Nothing the file says is believed: what it says wrongly, or beyond the limits, throws PropertyListFault.
/// An Object that was answered lies within the file. The bytes must outlive this.
class BinaryObjects {
public:
    /// An object as its first bytes tell it.
    struct Object {
        binary::Type type;
        std::size_t begin; ///< Where it stands in the file.
        std::size_t content; ///< Where it goes on behind its type and count.
        std::uint64_t count; ///< Of bytes, units, elements, or pairs.
        std::size_t size; ///< In bytes, of the content.

        bool isContainer() const { return type == binary::kArray || type == binary::kDictionary; }
    };
    /// A whole number of 64 bits, with a sign unless it is too large for that.
    struct Integer {
        std::uint64_t bits;
        bool isUnsigned;
    };

    BinaryObjects(std::span<const std::byte> bytes, const NSDecodingLimits& limits);

    std::uint64_t count() const { return mCount; }
    std::uint64_t top() const { return mTop; }
    Object object(std::uint64_t number) const;

    /// Tells that an object is read. All objects of a file lie beside each other, so those that are read must
    /// not take more bytes than it has: otherwise a short file could stand for a very long one.
    void claim(const Object& object);

    /// The numbers of what a container refers to: elements, or keys and then values.
    std::uint64_t referenceCount(const Object& container) const
    {
        return container.type == binary::kDictionary ? 2 * container.count : container.count;
    }
    std::uint64_t reference(const Object& container, std::uint64_t index) const
    {
        return integerAt(container.content + index * mReferenceSize, mReferenceSize);
    }

    /// A value, of any type but the containers.
    NSId value(const Object& value) const;
    bool truth(const Object& single) const;
    Integer integer(const Object& integer) const;
    double real(const Object& real) const; ///< Of a date as well.
    std::uint32_t uid(const Object& uid) const;
    std::span<const std::byte> bytes(const Object& data) const
    {
        return mBytes.subspan(data.content, data.size);
    }
    /// Whether a string has exactly these characters.
    bool isText(const Object& string, std::u16string_view characters) const;

private:
    [[noreturn]] static void fault(const std::string& text, std::size_t at);
    std::uint64_t integerAt(std::size_t at, std::size_t size) const
    {
        return binary::readInteger(mBytes.data() + at, size);
    }
    void readCount(Object& object, unsigned low) const;
    NSId asciiText(const Object& string) const;
    NSId utf16Text(const Object& string) const;

    std::span<const std::byte> mBytes;
    std::size_t mOffsetSize;
    std::size_t mReferenceSize;
    std::uint64_t mCount;
    std::uint64_t mTop;
    std::size_t mTable; // where the offsets begin, and objects end
    std::size_t mUnclaimed; // bytes that no object has taken yet
};

}
