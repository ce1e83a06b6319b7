#pragma once

#include "LUMPlatform/NSObject.h"

#include <cstddef>
#include <cstdlib>
#include <span>

class NSError;

/// Immutable bytes.
///
/// What makes data answers null when there is not enough memory. A range that does not lie inside raises
/// NSRangeException. Threads: immutable data may be shared; mutable data belongs to one thread at a time.
///
///     auto data = NSData::dataWithBytes("abc", 3);
///     for (std::byte byte : data->bytes())
///         std::cout << std::to_integer<int>(byte) << ' '; // 97 98 99
class NS_EXPORT NSData : public NSObject {
public:
    static const NSClass& classObject();

    static NSRef<NSData> data(); ///< Selector: data
    /// A copy of the bytes; null `bytes` with a length raises NSInvalidArgumentException.
    /// Selector: dataWithBytes:length:
    static NSRef<NSData> dataWithBytes(const void* bytes, NSUInteger length);
    /// Takes the bytes over without copying and gives them to `free` at its end, or at once when it cannot be
    /// made; with a null function they must outlive the data.
    /// Selector: dataWithBytesNoCopy:length:
    static NSRef<NSData> dataWithBytesNoCopy(void* bytes, NSUInteger length, void (*free)(void*) = std::free);
    /// Empty for null.
    /// Selector: dataWithData:
    static NSRef<NSData> dataWithData(const NSRef<NSData>& other);

    /// The bytes of a file, to its end. Null, with the status of what failed, when it cannot be read: -43
    /// when nothing is there, -50 for a path that is null, empty, or has a NUL inside.
    /// Selector: dataWithContentsOfFile:
    static NSRef<NSData> dataWithContentsOfFile(const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);
    /// Writes the bytes to a file; false, with the status of what failed, otherwise.
    ///
    /// `atomically`: in one step, so that whatever happens meanwhile, a power cut included, the file holds
    /// the old bytes or the new ones. The file keeps its permissions, and its owner where that is allowed; a
    /// symbolic link is written through. Otherwise the file is written in place.
    /// Selector: writeToFile:atomically:
    [[nodiscard]] bool writeToFile(
        const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error = nullptr) const;

    NSUInteger length() const { return mLength; } ///< Selector: length
    /// Valid while the data exists and, if it is mutable, is not changed.
    /// C++ form of bytes
    std::span<const std::byte> bytes() const { return { mBytes, mLength }; }
    NSRef<NSData> subdataWithRange(NSRange range) const; ///< A copy of a part. Selector: subdataWithRange:

    bool isEqualToData(const NSRef<NSData>& other) const; ///< Selector: isEqualToData:
    bool isEqual(const NSId& other) const override; ///< The same bytes.
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< "<0011aabb ccdd>"
    NSId copy() const override; ///< Itself.
    NSId mutableCopy() const override;

protected:
    NSData() = default;
    /// Owns `bytes` from here on.
    NSData(std::byte* bytes, NSUInteger length, void (*free)(void*));
    ~NSData() override;

    static std::byte* allocated(const void* bytes, NSUInteger length);
    void checkRange(const char* operation, NSRange range) const;

    std::byte* mBytes = nullptr;
    NSUInteger mLength = 0;
    void (*mFree)(void*) = nullptr;
};

/// Bytes that can be changed. A change that finds no memory raises NSMallocException and changes nothing.
/// Appending takes time linear in what is appended, on average. Threads: one at a time.
///
///     auto message = NSMutableData::data();
///     message->appendBytes("abc", 3);
///     message->setLength(8); // filled up with zeros
class NS_EXPORT NSMutableData : public NSData {
public:
    static const NSClass& classObject();

    static NSRef<NSMutableData> data(); ///< Selector: data
    /// Empty, with room for `capacity` bytes.
    /// Selector: dataWithCapacity:
    static NSRef<NSMutableData> dataWithCapacity(NSUInteger capacity);
    static NSRef<NSMutableData> dataWithLength(NSUInteger length); ///< Zeros. Selector: dataWithLength:
    /// Selector: dataWithBytes:length:
    static NSRef<NSMutableData> dataWithBytes(const void* bytes, NSUInteger length);
    static NSRef<NSMutableData> dataWithData(const NSRef<NSData>& other); ///< Selector: dataWithData:

    /// Valid until the next change.
    /// C++ form of mutableBytes
    std::span<std::byte> mutableBytes() { return { mBytes, mLength }; }
    void appendBytes(const void* bytes, NSUInteger length); ///< Selector: appendBytes:length:
    void appendData(const NSRef<NSData>& other); ///< Nothing for null. Selector: appendData:
    void setLength(NSUInteger length); ///< Cuts off, or appends zeros. Selector: setLength:
    /// Selector: replaceBytesInRange:withBytes:length:
    void replaceBytesInRange(NSRange range, const void* bytes, NSUInteger length);

    NSId copy() const override; ///< An immutable copy of the bytes.

protected:
    NSMutableData();
    NSMutableData(std::byte* bytes, NSUInteger length, NSUInteger capacity);
    ~NSMutableData() override;

private:
    void reserve(NSUInteger capacity);

    NSUInteger mCapacity = 0;
};
