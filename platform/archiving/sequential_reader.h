#pragma once

#include "LUMPlatform/NSData.h"
#include "platform/archiving/sequential_format.h"

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Reads the parts of a sequential archive of either byte order and remembers what later parts refer to.
///
/// Everything wrong with the bytes raises NSInconsistentArchiveException. Nothing is allocated for a count
/// before the bytes that it counts are there.
class SequentialReader {
public:
    /// Reads the header. The data is kept.
    explicit SequentialReader(const NSRef<NSData>& data);

    bool isAtEnd() const { return mAt == mBytes.size(); }
    std::size_t bytesLeft() const { return mBytes.size() - mAt; }
    [[noreturn]] void fault(const std::string& text) const;

    std::uint8_t readByte();
    std::span<const std::byte> readBytes(std::uint64_t length);
    std::int64_t readInteger();
    /// A real number of 4 or 8 bytes, or an integer in its place.
    double readReal(std::size_t size);
    std::string_view readText();
    std::string_view readSharedText();
    std::optional<std::string_view> readCString(); ///< None for null.
    /// The name of an object's class; those above it are read as well.
    std::string_view readClass();

    /// What stands where an object does.
    struct Reference {
        enum Kind { Null, New, Known } kind;
        std::size_t number; ///< Of a new or a known object.
    };
    Reference readReference();
    void readEnd(); ///< Of an object.

    /// Tells what became of a number. An object that is not made yet cannot be asked for.
    void setObject(std::size_t number, const NSId& object);
    NSId object(std::size_t number) const;

private:
    /// What has a number: an object, a class, or a C string.
    struct Numbered {
        enum Kind { Object, Class, CString } kind;
        bool isMade;
        NSId object;
        std::string_view text; // the name of a class, or the C string
    };

    template<typename Bits> Bits readBits();
    int readHead();
    std::int64_t readIntegerAfter(int head);
    std::size_t numberAfter(int head, std::size_t count);
    const Numbered& knownAfter(int head, Numbered::Kind kind);

    NSRef<NSData> mData;
    std::span<const std::byte> mBytes;
    std::size_t mAt = 0;
    bool mIsBigEndian = false;
    std::vector<std::string_view> mTexts; // they lie in the data
    std::vector<Numbered> mNumbered;
};

}
