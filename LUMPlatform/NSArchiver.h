#pragma once

#include "LUMPlatform/NSCoder.h"

#include <memory>
#include <span>

class NSData;
class NSError;
class NSMutableData;
namespace platform {
class SequentialWriter;
}

/// Writes objects into a sequential archive: values one after the other, without keys.
///
/// For what is small and settled; a keyed archive (NSKeyedArchiver) is the one that later versions of a class
/// can add to. Each object is written once, however often it is met, and a graph may lead back into itself.
/// An object of a class that is not registered (NSCoding) raises NSInvalidArgumentException, and so does one
/// that is nested more than 1,000 deep. After an exception everything raises
/// NSInvalidArchiveOperationException: half an object is in the archive. docs/formats/sequential-archive.md
/// has the layout. Threads: one at a time.
///
///     NSRef<NSData> data = NSArchiver::archivedDataWithRootObject(colour);
///     NSRef<NSObject> again = NSUnarchiver::unarchiveObjectWithData(data);
class NS_EXPORT NSArchiver : public NSCoder {
public:
    static const NSClass& classObject();

    /// An archive of one object, which may be null.
    /// Selector: archivedDataWithRootObject:
    static NSRef<NSData> archivedDataWithRootObject(const NSId& root);
    /// The same into a file, in one step; false, with the status of what failed, when it cannot be written.
    /// Selector: archiveRootObject:toFile:
    [[nodiscard]] static bool archiveRootObject(
        const NSId& root, const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);
    /// An archiver that appends to `data`, which it shares, whatever it is given to encode. Null raises
    /// NSInvalidArgumentException.
    /// Selector: initForWritingWithMutableData:
    static NSRef<NSArchiver> initForWritingWithMutableData(const NSRef<NSMutableData>& data);

    /// Where the archive goes.
    /// Selector: archiverData
    NSRef<NSMutableData> archiverData() const;

    void encodeObject(const NSId& object) override;
    void encodeBytes(const void* bytes, NSUInteger length) override;

protected:
    explicit NSArchiver(std::unique_ptr<platform::SequentialWriter> writer);
    ~NSArchiver() override;

    void encodeGroup(std::span<const NSArgument> values) override;

private:
    template<typename Write> void guarded(const Write& write);
    void writeObject(const NSId& object);

    std::unique_ptr<platform::SequentialWriter> mWriter;
    NSUInteger mDepth = 0;
    bool mHasFailed = false;
};
