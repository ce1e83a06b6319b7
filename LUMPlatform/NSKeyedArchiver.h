#pragma once

#include "LUMPlatform/NSCoder.h"

#include <cstdint>
#include <memory>
#include <span>

class NSData;
class NSError;
class NSKeyedArchiverDelegate;
class NSMutableData;
namespace platform {
class KeyedEncoder;
}

/// Writes objects into a keyed archive: a binary property list that other programs can read, and that later
/// versions of a class can add keys to.
///
/// Each object is written once, however often it is met, and a graph may lead back into itself; equal
/// strings, numbers and immutable data are written once as well. An object of a class that is not registered
/// (NSCoding) raises NSInvalidArgumentException, and so does one that is reached through more than 1,000
/// others of classes that encode themselves; collections inside each other count nothing. After an exception,
/// and after finishEncoding, everything raises NSInvalidArchiveOperationException.
/// docs/formats/keyed-archive.md has the layout. Threads: one at a time.
///
///     NSRef<NSData> data = NSKeyedArchiver::archivedDataWithRootObject(song);
///     auto again = NSCast<Song>(NSKeyedUnarchiver::unarchiveObjectWithData(data));
class NS_EXPORT NSKeyedArchiver : public NSCoder {
public:
    static const NSClass& classObject();

    /// An archive of one object, which may be null, under the key "root". Null when there is not enough
    /// memory for it.
    /// Selector: archivedDataWithRootObject:
    static NSRef<NSData> archivedDataWithRootObject(const NSId& root);
    /// The same into a file, in one step; false, with the status of what failed, when it cannot be written.
    /// Selector: archiveRootObject:toFile:
    [[nodiscard]] static bool archiveRootObject(
        const NSId& root, const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);
    /// An archiver for any number of values under keys of the caller's; finishEncoding appends the archive to
    /// `data`. Null raises NSInvalidArgumentException.
    /// Selector: initForWritingWithMutableData:
    static NSRef<NSKeyedArchiver> initForWritingWithMutableData(const NSRef<NSMutableData>& data);

    /// Null for none.
    /// Selector: setDelegate:
    void setDelegate(const NSRef<NSKeyedArchiverDelegate>& delegate);
    NSRef<NSKeyedArchiverDelegate> delegate() const; ///< Selector: delegate

    /// Ends the archive; again does nothing. Raises NSMallocException when there is not enough memory.
    /// Selector: finishEncoding
    void finishEncoding();

    bool allowsKeyedCoding() const override;
    void encodeObjectForKey(const NSId& object, const NSRef<NSString>& key) override;
    void encodeBool(bool value, const NSRef<NSString>& key) override;
    void encodeInt64(std::int64_t value, const NSRef<NSString>& key) override;
    void encodeFloat(float value, const NSRef<NSString>& key) override;
    void encodeDouble(double value, const NSRef<NSString>& key) override;
    void encodeBytesForKey(const void* bytes, NSUInteger length, const NSRef<NSString>& key) override;
    void encodeObject(const NSId& object) override;
    void encodeBytes(const void* bytes, NSUInteger length) override;

protected:
    explicit NSKeyedArchiver(const NSRef<NSMutableData>& data);
    ~NSKeyedArchiver() override;

    void encodeGroup(std::span<const NSArgument> values) override;

private:
    NSRef<NSData> finished();

    std::unique_ptr<platform::KeyedEncoder> mEncoder;
    NSRef<NSMutableData> mData;
};
