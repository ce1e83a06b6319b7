#pragma once

#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSDecodingLimits.h"

#include <map>
#include <memory>
#include <span>
#include <string>

class NSData;
namespace platform {
class DecodingCalls;
class SequentialReader;
struct ClassCoding;
}

/// Reads the objects of a sequential archive, as NSArchiver writes them, of either byte order.
///
/// Bytes that are no such archive, a keyed one for instance, and archives that are broken raise
/// NSInconsistentArchiveException. A class that is not registered (NSCoding), an object of another class than
/// the one asked for, and what is beyond the limits raise NSInvalidUnarchiveOperationException; after any of
/// these everything does. What was made until then goes: collections are emptied and objects undo what they
/// read (announceObject), so that none keeps itself alive; in a graph that is read and leads back into itself
/// that is the reader's to do. Threads: one at a time.
///
///     auto unarchiver = NSUnarchiver::initForReadingWithData(data);
///     while (!unarchiver->isAtEnd())
///         std::cout << unarchiver->decodeObject() << '\n';
class NS_EXPORT NSUnarchiver : public NSCoder {
public:
    static const NSClass& classObject();

    /// The root object; null when that was archived. Null data raises NSInconsistentArchiveException.
    /// Selector: unarchiveObjectWithData:
    static NSId unarchiveObjectWithData(const NSRef<NSData>& data);
    /// The same from a file; null when it cannot be read.
    /// Selector: unarchiveObjectWithFile:
    static NSId unarchiveObjectWithFile(const NSRef<NSString>& path);
    /// Reads values one after the other. Raises as unarchiveObjectWithData does.
    /// Selector: initForReadingWithData:
    static NSRef<NSUnarchiver> initForReadingWithData(
        const NSRef<NSData>& data, const NSDecodingLimits& limits = {});

    /// Whether all is read.
    /// Selector: isAtEnd
    bool isAtEnd() const;
    /// Makes objects of the class `trueName` where the archive names `nameInArchive`, whether there is a
    /// class of that name or not. Raises NSInvalidArgumentException for a null name.
    /// Selector: decodeClassName:asClassName:
    void decodeClassName(const NSRef<NSString>& nameInArchive, const NSRef<NSString>& trueName);

    const void* decodeBytesWithReturnedLength(NSUInteger* length) override;
    void announce(const NSId& object, Undo undo) override;

protected:
    NSUnarchiver(std::unique_ptr<platform::SequentialReader> reader, const NSDecodingLimits& limits);
    ~NSUnarchiver() override;

    NSId nextObject() override;
    void decodeGroup(std::span<const char* const> types, std::span<NSResult> results) override;
    void giveUp() override;

private:
    NSId readObject();
    NSId makeObject(const platform::ClassCoding& coding);

    std::unique_ptr<platform::SequentialReader> mReader;
    const NSDecodingLimits mLimits;
    std::size_t mMaking = 0; // the number of the object that is being made, when there is one
    NSUInteger mDepth = 0; // of objects inside each other
    const std::unique_ptr<platform::DecodingCalls> mCalls;
    std::map<std::string, std::string, std::less<>> mTrueNames; // by that in the archive
};

/// Bytes are no sequential archive, or a broken one.
extern NS_EXPORT const NSStringConstant NSInconsistentArchiveException;
