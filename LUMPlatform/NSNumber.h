#pragma once

#include "LUMPlatform/NSObject.h"

#include <cstdint>
#include <type_traits>

/// An immutable number or truth value as an object.
///
/// It remembers the type it was made with, which objCType tells and property lists and archives keep;
/// equality and order go by value alone, so 1, 1.0 and true are equal. The value functions convert: a truth
/// value is "not 0"; integers wrap to a narrower or unsigned type; floating-point values lose their fraction,
/// then a negative one wraps to an unsigned type and one out of range gives the nearest; not-a-number gives
/// 0. Threads: any.
///
///     NSRef<NSNumber> answer = 42;
///     double value = answer->doubleValue();
class NS_EXPORT NSNumber : public NSObject {
public:
    static const NSClass& classObject();

    /// One of two shared objects.
    /// Selector: numberWithBool:
    static NSRef<NSNumber> numberWithBool(bool value);
    static NSRef<NSNumber> numberWithChar(signed char value); ///< Selector: numberWithChar:
    static NSRef<NSNumber> numberWithUnsignedChar(unsigned char value); ///< Selector: numberWithUnsignedChar:
    static NSRef<NSNumber> numberWithShort(short value); ///< Selector: numberWithShort:
    /// Selector: numberWithUnsignedShort:
    static NSRef<NSNumber> numberWithUnsignedShort(unsigned short value);
    static NSRef<NSNumber> numberWithInt(int value); ///< Selector: numberWithInt:
    static NSRef<NSNumber> numberWithUnsignedInt(unsigned value); ///< Selector: numberWithUnsignedInt:
    static NSRef<NSNumber> numberWithLong(long value); ///< Selector: numberWithLong:
    static NSRef<NSNumber> numberWithUnsignedLong(unsigned long value); ///< Selector: numberWithUnsignedLong:
    static NSRef<NSNumber> numberWithLongLong(long long value); ///< Selector: numberWithLongLong:
    /// Selector: numberWithUnsignedLongLong:
    static NSRef<NSNumber> numberWithUnsignedLongLong(unsigned long long value);
    static NSRef<NSNumber> numberWithInteger(NSInteger value); ///< Selector: numberWithInteger:
    /// Selector: numberWithUnsignedInteger:
    static NSRef<NSNumber> numberWithUnsignedInteger(NSUInteger value);
    static NSRef<NSNumber> numberWithFloat(float value); ///< Selector: numberWithFloat:
    static NSRef<NSNumber> numberWithDouble(double value); ///< Selector: numberWithDouble:

    bool boolValue() const; ///< Selector: boolValue
    signed char charValue() const; ///< Selector: charValue
    unsigned char unsignedCharValue() const; ///< Selector: unsignedCharValue
    short shortValue() const; ///< Selector: shortValue
    unsigned short unsignedShortValue() const; ///< Selector: unsignedShortValue
    int intValue() const; ///< Selector: intValue
    unsigned unsignedIntValue() const; ///< Selector: unsignedIntValue
    long longValue() const; ///< Selector: longValue
    unsigned long unsignedLongValue() const; ///< Selector: unsignedLongValue
    long long longLongValue() const; ///< Selector: longLongValue
    unsigned long long unsignedLongLongValue() const; ///< Selector: unsignedLongLongValue
    NSInteger integerValue() const; ///< Selector: integerValue
    NSUInteger unsignedIntegerValue() const; ///< Selector: unsignedIntegerValue
    float floatValue() const; ///< Selector: floatValue
    double doubleValue() const; ///< Selector: doubleValue

    /// The type code of the value kept: "c" for truth values and signed bytes, "s", "i", "q", "f", "d". An
    /// unsigned value is kept in the next wider signed type, and as "Q" only from 2^63 on.
    /// Selector: objCType
    const char* objCType() const;
    bool isBool() const { return mIsBool; } ///< Whether it is one of the two truth values.
    bool isFloatingPoint() const { return mType == 'f' || mType == 'd'; }

    /// By exact value: no integer is rounded to compare it with a floating-point value. Not-a-number is equal
    /// to itself and comes before all others. Null raises NSInvalidArgumentException.
    /// Selector: compare:
    NSComparisonResult compare(const NSRef<NSNumber>& other) const;
    bool isEqualToNumber(const NSRef<NSNumber>& other) const; ///< Selector: isEqualToNumber:
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    /// Truth values as 1 and 0, integers plain, floats with 7 and doubles with 16 significant digits.
    /// Selector: stringValue
    NSRef<NSString> stringValue() const;
    NSRef<NSString> description() const override; ///< The same.
    NSId copy() const override; ///< Itself.

protected:
    explicit NSNumber(bool value);
    NSNumber(char type, std::uint64_t integer);
    NSNumber(char type, double real);
    ~NSNumber() override;

private:
    template<typename T> T converted() const;
    static NSRef<NSNumber> withSigned(char type, std::int64_t value);
    static NSRef<NSNumber> withUnsigned(std::uint64_t value);

    union {
        std::uint64_t mInteger; // the bits of a signed integer, except for 'Q'
        double mReal; // of 'f' too
    };
    char mType;
    bool mIsBool = false;
};

template<> struct NSBoxing<NSNumber> {
    template<NSNumeric T> static NSRef<NSNumber> box(T value)
    {
        if constexpr (std::is_same_v<T, bool>)
            return NSNumber::numberWithBool(value);
        else if constexpr (std::is_same_v<T, float>)
            return NSNumber::numberWithFloat(value);
        else if constexpr (std::is_same_v<T, double>)
            return NSNumber::numberWithDouble(value);
        else if constexpr (sizeof(T) == 1)
            return std::is_signed_v<T> ? NSNumber::numberWithChar(static_cast<signed char>(value))
                                       : NSNumber::numberWithUnsignedChar(static_cast<unsigned char>(value));
        else if constexpr (sizeof(T) == 2)
            return std::is_signed_v<T>
                ? NSNumber::numberWithShort(static_cast<short>(value))
                : NSNumber::numberWithUnsignedShort(static_cast<unsigned short>(value));
        else if constexpr (sizeof(T) == 4)
            return std::is_signed_v<T> ? NSNumber::numberWithInt(static_cast<int>(value))
                                       : NSNumber::numberWithUnsignedInt(static_cast<unsigned>(value));
        else
            return std::is_signed_v<T> ? NSNumber::numberWithInteger(static_cast<NSInteger>(value))
                                       : NSNumber::numberWithUnsignedInteger(static_cast<NSUInteger>(value));
    }
};
