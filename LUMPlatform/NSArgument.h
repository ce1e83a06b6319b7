#pragma once

#include "LUMPlatform/NSObject.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>

class NSClass;

/// The type code of a C++ type in dynamic calls, those of the 64-bit platform: "v", "@", ":", "#", "c", "C",
/// "s", "S", "i", "I", "q", "Q", "f", "d", "^v", and structures by name. A structure joins in by a
/// specialisation:
///
///     struct Colour { float red, green, blue; };
///     template<> struct NSTypeCode<Colour> { static constexpr const char* value = "{Colour=fff}"; };
template<typename T> struct NSTypeCode {
    static constexpr const char* find()
    {
        if constexpr (std::is_void_v<T>)
            return "v";
        else if constexpr (NSIsRef<T> || std::is_base_of_v<NSObject, T>)
            return "@";
        else if constexpr (std::is_same_v<T, NSSelector>)
            return ":";
        else if constexpr (std::is_same_v<T, NSClass>)
            return "#";
        else if constexpr (std::is_enum_v<T>)
            return NSTypeCode<std::underlying_type_t<T>>::value;
        else if constexpr (std::is_same_v<T, bool>)
            return "c"; // the platform's truth value is a signed byte
        else if constexpr (std::is_same_v<T, float>)
            return "f";
        else if constexpr (std::is_same_v<T, double>)
            return "d";
        else if constexpr (std::is_integral_v<T>)
            return integerCode(sizeof(T), std::is_signed_v<T>);
        else if constexpr (std::is_pointer_v<T>)
            return "^v";
        else
            return nullptr;
    }
    static constexpr const char* integerCode(std::size_t size, bool isSigned)
    {
        switch (size) {
        case 1:
            return isSigned ? "c" : "C";
        case 2:
            return isSigned ? "s" : "S";
        case 4:
            return isSigned ? "i" : "I";
        default:
            return isSigned ? "q" : "Q";
        }
    }
    static constexpr const char* value = find();
};

template<> struct NSTypeCode<NSRange> {
    static constexpr const char* value = "{_NSRange=QQ}";
};

/// A floating-point value as an integer of type T: truncated toward zero, the nearest limit of T when it lies
/// out of range, 0 for not-a-number. The plain conversion is undefined there.
template<typename T> constexpr T NSSaturated(double value)
{
    if (!(value == value))
        return 0;
    // Both limits as doubles: the upper one is a power of two, which is exact, and itself out of range.
    constexpr T kHalf = std::numeric_limits<T>::max() / 2 + 1;
    constexpr double kAbove = static_cast<double>(kHalf) * 2.0;
    constexpr double kLowest = static_cast<double>(std::numeric_limits<T>::min());
    if (value >= kAbove)
        return std::numeric_limits<T>::max();
    if (value <= kLowest)
        return std::numeric_limits<T>::min();
    return static_cast<T>(value);
}

/// One argument or result of a dynamic call on its way: a type code and the value.
///
/// Objects in it are borrowed, not owned: it lives no longer than the call. NSInvocation owns what it holds.
/// Reading as another type converts between numbers (integers wrap to the narrower type; a floating-point
/// value out of an integer's range gives the nearest one, not-a-number gives 0) and raises
/// NSInvalidArgumentException for everything else that does not fit, a wrong class of object included. A
/// value of type "?", which is unknown, reads as zero of every type; converting to "?" forgets a value of any
/// type. Threads: one at a time.
///
///     auto number = NSArgument::of(2.5);
///     std::cout << number.code() << ' ' << number.as<int>(); // d 2
class NS_EXPORT NSArgument {
public:
    static constexpr std::size_t kMaxSize = 32;

    NSArgument() = default; ///< No value: the result of a method that returns nothing.

    template<typename T> static NSArgument of(const T& value);
    /// A zero value of a type given by its code.
    static NSArgument zero(const char* code);

    const char* code() const { return mCode; }
    char kind() const { return mCode[0]; }
    bool isObject() const { return mCode[0] == '@'; }
    NSObject* object() const { return isObject() ? mValue.object : nullptr; }

    template<typename T> T as() const;
    /// The object, not counted, as one of a class or protocol; null for null.
    template<typename T> T* objectAs() const;

    /// The same value under another type code.
    NSArgument convertedTo(const char* code) const;

private:
    union Value {
        std::int64_t integer;
        double real;
        NSObject* object;
        const void* pointer;
        NSSelector selector;
        std::array<std::byte, kMaxSize> bytes;
        constexpr Value() : integer(0) { }
    };

    bool isUnknown() const { return mCode[0] == '?'; }
    /// Zero when the type is unknown; raises for any other.
    template<typename T> T zeroOfUnknown(const char* wanted) const
    {
        if (!isUnknown())
            doesNotFit(wanted);
        return T();
    }
    bool isInteger() const;
    double toReal() const;
    [[noreturn]] void doesNotFit(const char* wanted) const;
    [[noreturn]] static void wrongClass(const NSObject& object);

    const char* mCode = "v";
    Value mValue;
};

/// The result of a dynamic call: a value whose object, if it is one, is owned.
class NSResult {
public:
    NSResult() = default;
    NSResult(const NSResult&) = delete;
    NSResult& operator=(const NSResult&) = delete;
    ~NSResult() { clear(); }

    const NSArgument& value() const { return mValue; }
    /// Stores a value; an object in it is shared.
    void set(const NSArgument& value)
    {
        if (NSObject* object = value.object())
            object->retain();
        clear();
        mValue = value;
    }
    /// Stores an object without counting it again.
    template<typename T> void take(NSRef<T> object)
    {
        clear();
        mValue = NSArgument::of(object);
        (void)object.leak();
    }

private:
    void clear()
    {
        if (NSObject* object = mValue.object())
            object->release();
    }

    NSArgument mValue;
};

template<typename T> NSArgument NSArgument::of(const T& value)
{
    NSArgument result;
    if constexpr (std::is_same_v<T, NSArgument>) {
        result = value;
    } else if constexpr (std::is_base_of_v<NSObject, T>) {
        result.mCode = "@";
        result.mValue.object = const_cast<T*>(&value);
    } else if constexpr (std::is_base_of_v<NSClass, T>) {
        result.mCode = "#";
        result.mValue.pointer = &value;
    } else {
        result.mCode = NSTypeCode<T>::value;
        static_assert(NSTypeCode<T>::value != nullptr, "give the structure a type code (NSTypeCode)");
        if constexpr (NSIsRef<T>)
            result.mValue.object = NSObjectOf(value.get());
        else if constexpr (std::is_same_v<T, NSSelector>)
            result.mValue.selector = value;
        else if constexpr (std::is_floating_point_v<T>)
            result.mValue.real = static_cast<double>(value);
        else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>)
            result.mValue.integer = static_cast<std::int64_t>(value);
        else if constexpr (std::is_pointer_v<T>)
            result.mValue.pointer = reinterpret_cast<const void*>(value);
        else {
            static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= kMaxSize);
            std::memcpy(result.mValue.bytes.data(), &value, sizeof(T));
        }
    }
    return result;
}

template<typename T> T* NSArgument::objectAs() const
{
    if (!isObject())
        return zeroOfUnknown<T*>("@");
    NSObject* object = mValue.object;
    if constexpr (std::is_same_v<T, NSObject>)
        return object;
    else {
        T* cast = NSDowncast<T>(object);
        if (object && !cast)
            wrongClass(*object);
        return cast;
    }
}

template<typename T> T NSArgument::as() const
{
    static_assert(NSTypeCode<T>::value != nullptr, "give the structure a type code (NSTypeCode)");
    if constexpr (std::is_void_v<T>)
        return;
    else if constexpr (NSIsRef<T>) {
        return NSShare(objectAs<typename T::Object>());
    } else if constexpr (std::is_same_v<T, NSSelector>) {
        if (kind() != ':')
            return zeroOfUnknown<T>(":");
        return mValue.selector;
    } else if constexpr (std::is_same_v<T, bool>) {
        return isInteger() ? mValue.integer != 0 : toReal() != 0;
    } else if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(toReal());
    } else if constexpr (std::is_enum_v<T>) {
        return static_cast<T>(as<std::underlying_type_t<T>>());
    } else if constexpr (std::is_integral_v<T>) {
        return isInteger() ? static_cast<T>(mValue.integer) : NSSaturated<T>(toReal());
    } else if constexpr (std::is_pointer_v<T>) {
        if (kind() != '^' && kind() != '#')
            return zeroOfUnknown<T>("^v");
        return reinterpret_cast<T>(const_cast<void*>(mValue.pointer));
    } else {
        if (std::string_view(mCode) != NSTypeCode<T>::value)
            return zeroOfUnknown<T>(NSTypeCode<T>::value);
        T value;
        std::memcpy(&value, mValue.bytes.data(), sizeof(T));
        return value;
    }
}
