#pragma once

#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSDecodingLimits.h"

#include <cstdint>
#include <memory>
#include <span>

class NSData;
class NSKeyedUnarchiverDelegate;
namespace platform {
class KeyedDecoder;
}

/// Reads the objects of a keyed archive, as NSKeyedArchiver writes them and other programs do, in binary or
/// in XML.
///
/// Bytes that are no keyed archive raise NSInvalidArgumentException. An archive that is broken inside, that
/// names a class that is not registered (NSCoding), holds another type than the one asked for, or goes beyond
/// the limits raises NSInvalidUnarchiveOperationException; from then on, and after finishDecoding, everything
/// does. What was made until then goes: collections are emptied and objects undo what they read
/// (announceObject), so that none keeps itself alive; in a graph that is read and leads back into itself that
/// is the reader's to do. Reading takes time and memory linear in the bytes. The depth that is limited is
/// that of classes that decode themselves inside each other; collections are filled without recursion.
/// Threads: one at a time.
///
///     auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
///     unarchiver->setDelegate(standIns);
///     auto song = unarchiver->decodeObjectForKey<Song>("root");
///     unarchiver->finishDecoding();
class NS_EXPORT NSKeyedUnarchiver : public NSCoder {
public:
    static const NSClass& classObject();

    /// The object under the key "root"; null when that was archived, or when there is no such key.
    /// Selector: unarchiveObjectWithData:
    static NSId unarchiveObjectWithData(const NSRef<NSData>& data);
    /// The same from a file; null when it cannot be read.
    /// Selector: unarchiveObjectWithFile:
    static NSId unarchiveObjectWithFile(const NSRef<NSString>& path);
    /// Reads the values of an archive by their keys. Raises NSInvalidArgumentException for null as well.
    /// Selector: initForReadingWithData:
    static NSRef<NSKeyedUnarchiver> initForReadingWithData(
        const NSRef<NSData>& data, const NSDecodingLimits& limits = {});

    /// Null for none.
    /// Selector: setDelegate:
    void setDelegate(const NSRef<NSKeyedUnarchiverDelegate>& delegate);
    NSRef<NSKeyedUnarchiverDelegate> delegate() const; ///< Selector: delegate
    /// Makes objects of `type`, which must be registered, where the archive names the class `name`, whether
    /// there is one of that name or not. Raises NSInvalidArgumentException for a null name.
    /// Selector: setClass:forClassName:
    void setClass(const NSClass& type, const NSRef<NSString>& name);

    /// Ends the reading; again does nothing.
    /// Selector: finishDecoding
    void finishDecoding();

    bool allowsKeyedCoding() const override;
    bool containsValueForKey(const NSRef<NSString>& key) const override;
    bool decodeBoolForKey(const NSRef<NSString>& key) override;
    std::int64_t decodeInt64ForKey(const NSRef<NSString>& key) override;
    double decodeDoubleForKey(const NSRef<NSString>& key) override;
    const void* decodeBytesForKey(const NSRef<NSString>& key, NSUInteger* length) override;
    const void* decodeBytesWithReturnedLength(NSUInteger* length) override;
    void announce(const NSId& object, Undo undo) override;

protected:
    explicit NSKeyedUnarchiver(std::unique_ptr<platform::KeyedDecoder> decoder);
    ~NSKeyedUnarchiver() override;

    NSId objectForKey(const NSRef<NSString>& key) override;
    NSId nextObject() override;
    void decodeGroup(std::span<const char* const> types, std::span<NSResult> results) override;
    void giveUp() override;

private:
    std::unique_ptr<platform::KeyedDecoder> mDecoder;
};
