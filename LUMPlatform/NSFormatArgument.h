#pragma once

#include "LUMPlatform/NSStringConstant.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// One argument of a format, which remembers its type, so that a conversion that does not suit it is defined:
/// see NSString::stringWithFormat. Made implicitly; texts and objects are borrowed, so it lives no longer
/// than the call. Threads: one at a time.
///
///     const NSFormatArgument list[] = { 42, "tracks" };
///     auto line = NSString::stringWithFormatArguments("%d %s", list); // 42 tracks
class NSFormatArgument {
public:
    enum class Kind : std::uint8_t { Signed, Unsigned, Double, Bytes, Units, Object, Pointer };

    template<std::integral T>
    NSFormatArgument(T value)
        : mKind(std::is_signed_v<T> ? Kind::Signed : Kind::Unsigned)
        , mBits(sizeof(T) < sizeof(int) ? 8 * sizeof(int) : 8 * sizeof(T))
        , mInteger(static_cast<std::uint64_t>(value))
    {
    }
    /// An enumeration that converts to a number by itself.
    template<typename T>
    requires std::is_enum_v<T> && std::convertible_to<T, long long> NSFormatArgument(T value)
        : NSFormatArgument(static_cast<std::underlying_type_t<T>>(value))
    {
    }
    NSFormatArgument(double value) : mKind(Kind::Double), mDouble(value) { }
    /// A C string: nothing behind its terminator is read, nor behind the precision of its conversion.
    NSFormatArgument(const char* text) : mKind(Kind::Bytes), mLength(kTerminated), mPointer(text) { }
    NSFormatArgument(std::string_view text) : mKind(Kind::Bytes), mLength(text.size()), mPointer(text.data())
    {
    }
    NSFormatArgument(const std::string& text) : NSFormatArgument(std::string_view(text)) { }
    NSFormatArgument(std::u16string_view text)
        : mKind(Kind::Units), mLength(text.size()), mPointer(text.data())
    {
    }
    /// A text that ends at its terminator.
    NSFormatArgument(const char16_t* text)
        : NSFormatArgument(text ? std::u16string_view(text) : std::u16string_view(u"(null)"))
    {
    }
    template<typename T>
    NSFormatArgument(const NSRef<T>& object) : mKind(Kind::Object), mObject(NSObjectOf(object.get()))
    {
    }
    NS_EXPORT NSFormatArgument(const NSStringConstant& constant);
    NSFormatArgument(std::nullptr_t) : mKind(Kind::Object), mObject(nullptr) { }
    NSFormatArgument(const void* pointer) : mKind(Kind::Pointer), mPointer(pointer) { }

    /// Which of the following says what it is.
    Kind kind() const { return mKind; }
    /// The width of the integer's type, never less than that of int.
    unsigned bits() const { return mBits; }
    /// The integer, extended to 64 bits by the rules of its own type.
    std::uint64_t integer() const { return mInteger; }
    double number() const { return mDouble; }
    const void* pointer() const { return mKind == Kind::Object ? mObject : mPointer; }
    const NSObject* object() const { return mObject; }
    /// At most `limit` bytes of a C string or byte text.
    NS_EXPORT std::string_view bytes(std::size_t limit) const;
    std::u16string_view units() const { return { static_cast<const char16_t*>(mPointer), mLength }; }

private:
    static constexpr std::size_t kTerminated = SIZE_MAX;

    Kind mKind;
    unsigned mBits = 0;
    std::size_t mLength = 0;
    union {
        std::uint64_t mInteger;
        double mDouble;
        const void* mPointer;
        const NSObject* mObject;
    };
};
