#pragma once

#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedArchiverDelegate.h"
#include "LUMPlatform/NSWeak.h"
#include "platform/archiving/class_codings.h"
#include "platform/archiving/keyed_slots.h"

namespace platform {

/// What an NSKeyedArchiver does. Collections are gone through on a stack of its own; only classes that encode
/// themselves are called inside each other.
class KeyedEncoder {
public:
    using Uid = KeyedSlots::Uid;
    using Number = KeyedSlots::Number;

    explicit KeyedEncoder(NSKeyedArchiver& archiver) : mArchiver(archiver) { }

    void setDelegate(const NSRef<NSKeyedArchiverDelegate>& delegate);
    NSRef<NSKeyedArchiverDelegate> delegate() const { return mDelegate.get(); }

    /// Null as a key stands for the next one of values without keys.
    void encodeObject(const NSId& object, const NSString* key);
    void encodeInteger(std::int64_t value, const NSString* key);
    void encodeValue(const NSObject& value, PropertyListKind kind, const NSString* key);

    bool isFinished() const { return mIsFinished; }
    /// The archive; null when there is not enough memory for it.
    NSRef<NSData> finish();

private:
    /// The object whose entries are being gathered: those from `firstEntry` on.
    struct Current {
        std::size_t firstEntry = 0;
        std::uint32_t withoutKey = 0; // values so far
    };
    /// A collection of which not all elements have slots. A dictionary's are its keys, then its values.
    struct Open {
        Uid uid;
        const ClassCoding* coding;
        NSId object;
        std::vector<NSId> elements;
        std::vector<Number> references; // to those that have
    };

    void requireUsable() const;
    template<typename Encode> void guarded(const Encode& encode);
    Number keyNumber(const NSString* key);
    void add(Number key, Number value);

    Uid uidOfGraph(const NSId& root);
    Uid begin(const NSId& object);
    Uid beginNew(const NSId& object, const ClassCoding& coding);
    const ClassCoding& codingOf(const NSObject& object);
    void encodeItself(Uid uid, const NSId& object, const ClassCoding& coding);
    void finishCollection(const Open& collection);
    void fill(Uid uid, const NSClass& type, std::span<const KeyedSlots::Entry> entries);
    void tellEncoded(const NSId& object);

    NSKeyedArchiver& mArchiver;
    NSWeak<NSKeyedArchiverDelegate> mDelegate;
    bool mHasDelegate = false;
    bool mIsFinished = false;
    bool mHasFailed = false;

    KeyedSlots mSlots;
    std::vector<KeyedSlots::Entry> mEntries; // of all objects that are encoding themselves
    std::vector<bool> mIsKey; // by the number of the text
    Current mCurrent;
    std::vector<Open> mOpen;
    NSUInteger mDepth = 0;
    std::pair<const NSClass*, const ClassCoding*> mLastCoding {};
};

}
