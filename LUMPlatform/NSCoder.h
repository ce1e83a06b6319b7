#pragma once

#include "LUMPlatform/NSArgument.h"
#include "LUMPlatform/NSStringConstant.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

class NSString;

/// What objects write themselves into and are made from; the base of the archivers and unarchivers.
///
/// Values go either by key, in any order, or one after the other. A keyed archive takes both; a sequential
/// one (NSArchiver) only the second, which allowsKeyedCoding() tells. A value that is asked for as another
/// type than the one it was written as raises NSInvalidUnarchiveOperationException: integers of every width
/// are one type, and so are both floating-point widths. An integer that does not fit the type asked for
/// raises NSRangeException. What is asked of a coder that cannot do it, and a null key, raise
/// NSInvalidArgumentException. NSCoding shows an example. Threads: one at a time.
class NS_EXPORT NSCoder : public NSObject {
public:
    static const NSClass& classObject();

    /// Whether values may go by key.
    /// Selector: allowsKeyedCoding
    virtual bool allowsKeyedCoding() const;

    // Writing by key. Each key of an object is used once: again raises NSInvalidArchiveOperationException.

    /// Null is written too.
    /// Selector: encodeObject:forKey:
    virtual void encodeObjectForKey(const NSId& object, const NSRef<NSString>& key);
    virtual void encodeBool(bool value, const NSRef<NSString>& key); ///< Selector: encodeBool:forKey:
    void encodeInt(int value, const NSRef<NSString>& key); ///< Selector: encodeInt:forKey:
    void encodeInt32(std::int32_t value, const NSRef<NSString>& key); ///< Selector: encodeInt32:forKey:
    /// Selector: encodeInt64:forKey:
    virtual void encodeInt64(std::int64_t value, const NSRef<NSString>& key);
    void encodeInteger(NSInteger value, const NSRef<NSString>& key); ///< Selector: encodeInteger:forKey:
    virtual void encodeFloat(float value, const NSRef<NSString>& key); ///< Selector: encodeFloat:forKey:
    virtual void encodeDouble(double value, const NSRef<NSString>& key); ///< Selector: encodeDouble:forKey:
    /// A copy of the bytes.
    /// Selector: encodeBytes:length:forKey:
    virtual void encodeBytesForKey(const void* bytes, NSUInteger length, const NSRef<NSString>& key);

    // Reading by key. A key that was not written reads as null, false or 0.

    virtual bool containsValueForKey(const NSRef<NSString>& key) const; ///< Selector: containsValueForKey:
    /// The object as a `T`; one that is no T raises NSInvalidUnarchiveOperationException.
    /// Selector: decodeObjectForKey:
    template<typename T = NSObject> NSRef<T> decodeObjectForKey(const NSRef<NSString>& key)
    {
        return expected<T>(objectForKey(key));
    }
    virtual bool decodeBoolForKey(const NSRef<NSString>& key); ///< Selector: decodeBoolForKey:
    int decodeIntForKey(const NSRef<NSString>& key); ///< Selector: decodeIntForKey:
    std::int32_t decodeInt32ForKey(const NSRef<NSString>& key); ///< Selector: decodeInt32ForKey:
    virtual std::int64_t decodeInt64ForKey(const NSRef<NSString>& key); ///< Selector: decodeInt64ForKey:
    NSInteger decodeIntegerForKey(const NSRef<NSString>& key); ///< Selector: decodeIntegerForKey:
    float decodeFloatForKey(const NSRef<NSString>& key); ///< Selector: decodeFloatForKey:
    virtual double decodeDoubleForKey(const NSRef<NSString>& key); ///< Selector: decodeDoubleForKey:
    /// Valid while the coder lives; null when there are none. `length` may be null.
    /// Selector: decodeBytesForKey:returnedLength:
    virtual const void* decodeBytesForKey(const NSRef<NSString>& key, NSUInteger* length);

    // One after the other. What is read must be what was written, in the same order and the same groups.

    virtual void encodeObject(const NSId& object); ///< Selector: encodeObject:
    /// A group of numbers and references to objects: `encodeValuesOfObjCTypes(x, y, name)`.
    /// C++ form of encodeValuesOfObjCTypes:
    template<typename... Values> void encodeValuesOfObjCTypes(const Values&... values)
    {
        const std::array<NSArgument, sizeof...(values)> list { NSArgument::of(values)... };
        encodeGroup(list);
    }
    /// A copy of the bytes.
    /// Selector: encodeBytes:length:
    virtual void encodeBytes(const void* bytes, NSUInteger length);

    /// As decodeObjectForKey.
    /// Selector: decodeObject
    template<typename T = NSObject> NSRef<T> decodeObject() { return expected<T>(nextObject()); }
    /// Reads a group into variables, each of a type of the kind that was written.
    /// C++ form of decodeValuesOfObjCTypes:
    template<typename... Values> void decodeValuesOfObjCTypes(Values&... values)
    {
        static constexpr std::array<const char*, sizeof...(values)> kTypes { NSTypeCode<Values>::value... };
        std::array<NSResult, sizeof...(values)> results;
        decodeGroup(kTypes, results);
        std::size_t at = 0;
        ((values = decoded<Values>(results[at++])), ...);
    }
    /// As decodeBytesForKey.
    /// Selector: decodeBytesWithReturnedLength:
    virtual const void* decodeBytesWithReturnedLength(NSUInteger* length);

    /// Tells the coder, while an object is made, which it will be. An object that others lead back to says so
    /// before it reads them; a way back to one that has not is no object yet, and raises
    /// NSInvalidUnarchiveOperationException.
    ///
    /// When the archive then turns out to be broken nobody gets the object, but objects that lead back to
    /// each other would stay for ever. So T has a function `void undoDecoding() noexcept`, which lets go of
    /// all objects that it read; the coder calls it when it gives up.
    template<typename T> void announceObject(const NSRef<T>& object)
    {
        constexpr bool kLetsGo = requires(T & made)
        {
            {
                made.undoDecoding()
            }
            noexcept;
        };
        static_assert(kLetsGo, "an object that is announced has `void undoDecoding() noexcept`");
        announce(object, [](NSObject& made) noexcept { static_cast<T&>(made).undoDecoding(); });
    }
    /// Lets an object go of what it read.
    using Undo = void (*)(NSObject& made) noexcept;
    /// The same with a function of the caller's. Does nothing here.
    virtual void announce(const NSId& object, Undo undo);

protected:
    NSCoder() = default;
    ~NSCoder() override;

    virtual NSId objectForKey(const NSRef<NSString>& key);
    virtual NSId nextObject();
    virtual void encodeGroup(std::span<const NSArgument> values);
    /// Fills `results` with values of `types`, or of types that convert to them without loss.
    virtual void decodeGroup(std::span<const char* const> types, std::span<NSResult> results);
    /// What was decoded last is not what was asked for, and nobody gets it. Does nothing here.
    virtual void giveUp();

private:
    template<typename T> NSRef<T> expected(const NSId& object)
    {
        NSRef<T> cast = NSCast<T>(object);
        if (object && !cast)
            refuse(*object);
        return cast;
    }
    template<typename T> T decoded(const NSResult& result)
    {
        if constexpr (NSIsRef<T>)
            return expected<typename T::Object>(NSShare(result.value().object()));
        else
            return result.value().as<T>();
    }
    [[noreturn]] void refuse(const NSObject& object);
    [[noreturn]] void cannot(const char* operation) const;
};

/// An archive cannot be written so: it is finished, or a key is used twice.
extern NS_EXPORT const NSStringConstant NSInvalidArchiveOperationException;
/// An archive does not hold what is asked for, or what it holds cannot be made.
extern NS_EXPORT const NSStringConstant NSInvalidUnarchiveOperationException;
