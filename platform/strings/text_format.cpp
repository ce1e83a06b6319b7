#include "platform/strings/text_format.h"

#include "LUMPlatform/NSArgument.h"
#include "platform/strings/code_points.h"
#include "platform/strings/format_directive.h"
#include "platform/strings/number_text.h"
#include "platform/strings/text_encoding.h"

namespace platform {
namespace {

using Kind = NSFormatArgument::Kind;

/// Walks a format; what it cannot convert it copies.
class Formatter {
public:
    Formatter(std::u16string& out, std::span<const NSFormatArgument> arguments, DescribeObject describe)
        : mOut(out), mArguments(arguments), mDescribe(describe)
    {
    }

    void run(std::u16string_view format)
    {
        for (;;) {
            std::size_t percent = format.find(u'%');
            mOut.append(format.substr(0, percent));
            if (percent == std::u16string_view::npos)
                return;
            format.remove_prefix(percent);
            FormatDirective directive = parseDirective(format, [this] { return takeFieldArgument(); });
            if (!convert(directive))
                mOut.append(format.substr(0, directive.length));
            format.remove_prefix(directive.length);
        }
    }

private:
    const NSFormatArgument* take() { return mNext < mArguments.size() ? &mArguments[mNext++] : nullptr; }

    /// The number for a "*": zero when the argument is none.
    std::int64_t takeFieldArgument()
    {
        const NSFormatArgument* argument = take();
        return argument && isInteger(*argument) ? static_cast<std::int64_t>(argument->integer()) : 0;
    }

    /// False when there is nothing to write in the place of the directive.
    bool convert(const FormatDirective& directive)
    {
        if (directive.conversion == u'%') {
            mOut.push_back(u'%');
            return true;
        }
        if (directive.kind == ConversionKind::Unknown)
            return false;
        const NSFormatArgument* argument = take();
        if (!argument)
            return false;
        switch (directive.kind) {
        case ConversionKind::Integer:
            return convertInteger(directive, *argument);
        case ConversionKind::Floating:
            return convertFloating(directive, *argument);
        case ConversionKind::Character:
            return convertCharacter(directive, *argument);
        case ConversionKind::Pointer:
            return convertPointer(directive, *argument);
        case ConversionKind::Text:
            pad(directive, textOf(directive, *argument));
            return true;
        case ConversionKind::Unknown:
            break;
        }
        return false;
    }

    static bool isInteger(const NSFormatArgument& argument)
    {
        return argument.kind() == Kind::Signed || argument.kind() == Kind::Unsigned;
    }

    bool convertInteger(const FormatDirective& directive, const NSFormatArgument& argument)
    {
        if (argument.kind() == Kind::Double)
            appendInteger(mOut, directive,
                static_cast<std::uint64_t>(NSSaturated<std::int64_t>(argument.number())), 64);
        else if (isInteger(argument))
            appendInteger(mOut, directive, argument.integer(), argument.bits());
        else
            return false;
        return true;
    }

    bool convertFloating(const FormatDirective& directive, const NSFormatArgument& argument)
    {
        if (argument.kind() == Kind::Double)
            appendFloating(mOut, directive, argument.number());
        else if (argument.kind() == Kind::Signed)
            appendFloating(
                mOut, directive, static_cast<double>(static_cast<std::int64_t>(argument.integer())));
        else if (argument.kind() == Kind::Unsigned)
            appendFloating(mOut, directive, static_cast<double>(argument.integer()));
        else
            return false;
        return true;
    }

    bool convertCharacter(const FormatDirective& directive, const NSFormatArgument& argument)
    {
        if (!isInteger(argument))
            return false;
        auto unit = static_cast<char16_t>(argument.integer());
        if (directive.conversion == u'C') {
            pad(directive, { &unit, 1 });
            return true;
        }
        auto byte = static_cast<char>(argument.integer());
        pad(directive, utf16FromUnknownBytes({ &byte, 1 }));
        return true;
    }

    bool convertPointer(const FormatDirective& directive, const NSFormatArgument& argument)
    {
        if (argument.kind() == Kind::Double || argument.kind() == Kind::Units)
            return false;
        std::uint64_t address =
            isInteger(argument) ? argument.integer() : reinterpret_cast<std::uintptr_t>(argument.pointer());
        std::u16string digits = u"0x";
        FormatDirective hexadecimal;
        hexadecimal.conversion = u'x';
        appendInteger(digits, hexadecimal, address, 64);
        pad(directive, digits);
        return true;
    }

    std::u16string textOf(const FormatDirective& directive, const NSFormatArgument& argument)
    {
        std::u16string text;
        FormatDirective plain;
        switch (argument.kind()) {
        case Kind::Bytes:
            return utf16FromUnknownBytes(argument.bytes(directive.precision.value_or(SIZE_MAX)));
        case Kind::Object:
            text = argument.object() ? mDescribe(*argument.object()) : std::u16string(u"(null)");
            break;
        case Kind::Units:
            text = argument.units();
            break;
        case Kind::Signed:
        case Kind::Unsigned:
            plain.conversion = argument.kind() == Kind::Signed ? u'd' : u'u';
            appendInteger(text, plain, argument.integer(), argument.bits());
            break;
        case Kind::Double:
            plain.conversion = u'g';
            plain.precision = 16;
            appendFloating(text, plain, argument.number());
            break;
        case Kind::Pointer:
            plain.conversion = u'x';
            text = u"0x";
            appendInteger(text, plain, reinterpret_cast<std::uintptr_t>(argument.pointer()), 64);
            break;
        }
        if (directive.precision && *directive.precision < text.size()) {
            std::size_t end = *directive.precision;
            text.resize(isInsidePair(text, end) ? end - 1 : end);
        }
        return text;
    }

    void pad(const FormatDirective& directive, std::u16string_view text)
    {
        std::size_t padding = directive.width > text.size() ? directive.width - text.size() : 0;
        if (!directive.leftAligned)
            mOut.append(padding, u' ');
        mOut.append(text);
        if (directive.leftAligned)
            mOut.append(padding, u' ');
    }

    std::u16string& mOut;
    std::span<const NSFormatArgument> mArguments;
    DescribeObject mDescribe;
    std::size_t mNext = 0;
};

}

void appendFormat(std::u16string& out, std::u16string_view format,
    std::span<const NSFormatArgument> arguments, DescribeObject describe)
{
    Formatter(out, arguments, describe).run(format);
}

}
