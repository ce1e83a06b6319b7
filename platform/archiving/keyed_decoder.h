#pragma once

#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "LUMPlatform/NSWeak.h"
#include "platform/archiving/decoding_calls.h"
#include "platform/archiving/keyed_archive.h"
#include "platform/archiving/keyed_classes.h"
#include "platform/archiving/whole_number.h"

#include <vector>

namespace platform {

/// What an NSKeyedUnarchiver does. Collections are filled from a stack of its own, their elements before
/// themselves; only classes that decode themselves are called inside each other.
///
/// Objects are told apart by the place of their contents in the file, so a file cannot hold more of them than
/// it has room for, however many slots refer to one place.
class KeyedDecoder {
public:
    using Object = KeyedArchive::Object;

    KeyedDecoder(std::unique_ptr<KeyedArchive> archive, const NSDecodingLimits& limits);
    void setUnarchiver(NSKeyedUnarchiver& unarchiver) { mUnarchiver = &unarchiver; }

    void setDelegate(const NSRef<NSKeyedUnarchiverDelegate>& delegate);
    NSRef<NSKeyedUnarchiverDelegate> delegate() const { return mDelegate.get(); }
    void setClass(const NSClass& type, const NSRef<NSString>& name) { mClasses.setClass(type, name); }

    // Null as a key stands for the next one of values without keys.

    bool contains(const NSString* key);
    NSId object(const NSString* key);
    bool truth(const NSString* key);
    Whole integer(const NSString* key);
    double real(const NSString* key);
    std::span<const std::byte> bytes(const NSString* key);

    void announce(const NSId& object, NSCoder::Undo undo);
    /// What was answered last is not what was asked for.
    void giveUp() { mCalls.fail(); }
    void finish();

private:
    /// What is known of an object of the file.
    struct Known {
        enum State : std::uint8_t { Unread, Making, Made };

        NSId object;
        State state = Unread; ///< While it is being made, the object may be there already.
    };
    /// The object that is decoding itself.
    struct Current {
        Object dictionary;
        std::uint64_t number;
        std::uint64_t cursor = 0;
        std::uint32_t withoutKey = 0;
    };
    /// A collection that is being filled. A dictionary's keys come before its values.
    struct Open {
        std::uint64_t number;
        CodedKind kind;
        Object keys; // of a dictionary
        Object elements;
        std::vector<NSId> made;
    };

    template<typename Decode> auto guarded(const Decode& decode);
    std::optional<Object> value(const NSString* key);
    [[noreturn]] static void wrongType(const NSString* key);
    void take(const Object& content);

    NSId objectOf(const Object& reference);
    void begin(std::uint64_t number);
    void beginObject(std::uint64_t number, const Object& dictionary);
    void beginCollection(std::uint64_t number, const Object& dictionary, CodedKind kind);
    void decodeItself(std::uint64_t number, const Object& dictionary, const ClassCoding& coding);
    void addElement(Open& collection);
    void finishCollection(Open collection);
    Object entry(const Object& dictionary, std::u16string_view key, binary::Type type);
    NSId textOrData(const Object& dictionary, CodedKind kind);
    NSId valueAt(std::uint64_t number);
    void made(std::uint64_t number, const NSId& object);

    std::unique_ptr<KeyedArchive> mArchive;
    BinaryObjects& mObjects;
    const NSDecodingLimits mLimits;
    NSKeyedUnarchiver* mUnarchiver = nullptr;
    KeyedClasses mClasses;
    NSWeak<NSKeyedUnarchiverDelegate> mDelegate;
    bool mHasDelegate = false;
    bool mIsFinished = false;

    std::vector<Known> mKnown; // by number
    std::vector<Open> mOpen;
    DecodingCalls mCalls;
    Current mCurrent;
    NSUInteger mDepth = 0; // of objects that decode themselves
    std::uint64_t mTakeable; // bytes of texts and data that objects may still take
};

}
