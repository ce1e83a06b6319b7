#include "platform/strings/format_directive.h"

#include "platform/strings/text_format.h"

#include <algorithm>

namespace platform {
namespace {

/// Reads one directive; at its end every question about the next unit is answered with U+0000.
class DirectiveReader {
public:
    DirectiveReader(std::u16string_view format, const std::function<std::int64_t()>& fieldArgument)
        : mFormat(format), mFieldArgument(fieldArgument)
    {
    }

    FormatDirective read()
    {
        readFlags();
        readWidth();
        readPrecision();
        readLengthModifier();
        mDirective.conversion = peek();
        mDirective.kind = kindOf(mDirective.conversion);
        mDirective.length = std::min(mAt + 1, mFormat.size());
        return mDirective;
    }

private:
    char16_t peek() const { return mAt < mFormat.size() ? mFormat[mAt] : u'\0'; }

    bool take(char16_t unit)
    {
        if (mAt == mFormat.size() || mFormat[mAt] != unit)
            return false;
        ++mAt;
        return true;
    }

    void readFlags()
    {
        for (;; ++mAt) {
            switch (peek()) {
            case u'-':
                mDirective.leftAligned = true;
                break;
            case u'+':
                mDirective.plus = true;
                break;
            case u' ':
                mDirective.space = true;
                break;
            case u'0':
                mDirective.zeroPadded = true;
                break;
            case u'#':
                mDirective.alternate = true;
                break;
            case u'\'': // Grouping is a matter of locale, and there is none here.
                break;
            default:
                return;
            }
        }
    }

    std::size_t readNumber()
    {
        std::size_t number = 0;
        for (; peek() >= u'0' && peek() <= u'9'; ++mAt)
            number = std::min<std::size_t>(number * 10 + (peek() - u'0'), kLongestField);
        return number;
    }

    static std::size_t fieldLength(std::uint64_t magnitude)
    {
        return std::min<std::uint64_t>(magnitude, kLongestField);
    }

    void readWidth()
    {
        if (!take(u'*')) {
            mDirective.width = readNumber();
            return;
        }
        std::int64_t width = mFieldArgument();
        if (width < 0)
            mDirective.leftAligned = true;
        mDirective.width = fieldLength(
            width < 0 ? 0 - static_cast<std::uint64_t>(width) : static_cast<std::uint64_t>(width));
    }

    void readPrecision()
    {
        if (!take(u'.'))
            return;
        if (!take(u'*')) {
            mDirective.precision = readNumber();
            return;
        }
        std::int64_t precision = mFieldArgument();
        if (precision >= 0)
            mDirective.precision = fieldLength(static_cast<std::uint64_t>(precision));
    }

    void readLengthModifier()
    {
        if (take(u'h'))
            mDirective.bits = take(u'h') ? 8 : 16;
        while (take(u'l') || take(u'q') || take(u'z') || take(u't') || take(u'j') || take(u'L'))
            mDirective.bits = 64;
    }

    static ConversionKind kindOf(char16_t conversion)
    {
        switch (conversion) {
        case u'd':
        case u'i':
        case u'u':
        case u'x':
        case u'X':
        case u'o':
            return ConversionKind::Integer;
        case u'f':
        case u'F':
        case u'e':
        case u'E':
        case u'g':
        case u'G':
            return ConversionKind::Floating;
        case u'c':
        case u'C':
            return ConversionKind::Character;
        case u'p':
            return ConversionKind::Pointer;
        case u's':
        case u'@':
            return ConversionKind::Text;
        default:
            return ConversionKind::Unknown;
        }
    }

    std::u16string_view mFormat;
    const std::function<std::int64_t()>& mFieldArgument;
    std::size_t mAt = 1; // behind the "%"
    FormatDirective mDirective;
};

}

FormatDirective parseDirective(std::u16string_view format, const std::function<std::int64_t()>& fieldArgument)
{
    return DirectiveReader(format, fieldArgument).read();
}

}
