#include "platform/proplists/text_scanner.h"

#include "platform/proplists/nextstep_encoding.h"

#include <algorithm>

namespace platform {
namespace {

bool isSpace(char16_t unit)
{
    constexpr char16_t kLineSeparator = 0x2028;
    constexpr char16_t kParagraphSeparator = 0x2029;
    return (unit >= '\t' && unit <= '\r') || unit == ' ' || unit == kLineSeparator
        || unit == kParagraphSeparator;
}

bool isBare(char16_t unit)
{
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || (unit >= '0' && unit <= '9')
        || unit == '_' || unit == '$' || unit == '/' || unit == ':' || unit == '.' || unit == '-';
}

/// The value of a digit in `base`; -1 when it is none.
int digitValue(char16_t unit, int base)
{
    int value = -1;
    if (unit >= '0' && unit <= '9')
        value = unit - '0';
    else if (unit >= 'a' && unit <= 'f')
        value = unit - 'a' + 10;
    else if (unit >= 'A' && unit <= 'F')
        value = unit - 'A' + 10;
    return value < base ? value : -1;
}

}

void TextScanner::fault(const std::string& text) const
{
    const auto line = 1 + std::count(mText.begin(), mText.begin() + static_cast<std::ptrdiff_t>(mAt), u'\n');
    throw PropertyListFault(text + " on line " + std::to_string(line));
}

bool TextScanner::hasMore()
{
    for (; mAt < mText.size(); ++mAt) {
        if (isSpace(mText[mAt]))
            continue;
        const auto rest = mText.substr(mAt);
        if (!rest.starts_with(u"//") && !rest.starts_with(u"/*"))
            return true;
        skipComment();
    }
    return false;
}

/// Goes to the last character of the comment that begins here.
void TextScanner::skipComment()
{
    const bool isLine = mText[mAt + 1] == '/';
    const std::size_t end =
        isLine ? mText.find_first_of(u"\n\r\x2028\x2029", mAt) : mText.find(u"*/", mAt + 2);
    if (end != std::u16string_view::npos)
        mAt = isLine ? end : end + 1;
    else if (isLine)
        mAt = mText.size() - 1;
    else
        fault("a comment has no end");
}

char16_t TextScanner::next()
{
    return hasMore() ? mText[mAt] : u'\0';
}

bool TextScanner::take(char16_t character)
{
    if (!hasMore() || mText[mAt] != character)
        return false;
    ++mAt;
    return true;
}

bool TextScanner::isAtString()
{
    return hasMore() && (mText[mAt] == '"' || mText[mAt] == '\'' || isBare(mText[mAt]));
}

std::u16string TextScanner::string()
{
    const char16_t first = next();
    if (first == '"' || first == '\'') {
        ++mAt;
        return quoted(first);
    }
    const std::size_t begin = mAt;
    while (mAt < mText.size() && isBare(mText[mAt]))
        ++mAt;
    if (mAt == begin)
        fault("a string is missing");
    return std::u16string(mText.substr(begin, mAt - begin));
}

std::u16string TextScanner::quoted(char16_t quote)
{
    std::u16string string;
    for (;;) {
        std::size_t stop = mAt; // of the two, the one that comes first: the other may be far behind
        while (stop < mText.size() && mText[stop] != quote && mText[stop] != '\\')
            ++stop;
        if (stop == mText.size())
            fault("a quoted string has no end");
        string += mText.substr(mAt, stop - mAt);
        mAt = stop + 1;
        if (mText[stop] == quote)
            return string;
        if (mAt >= mText.size())
            fault("a quoted string has no end");
        string += escaped();
    }
}

/// What stands behind a backslash: three octal digits, U and four hexadecimal ones, a letter as in C, or any
/// other character for itself.
char16_t TextScanner::escaped()
{
    const auto digits = [&](int base, int most) {
        int value = 0;
        for (int digit = 0; most > 0 && mAt < mText.size() && (digit = digitValue(mText[mAt], base)) >= 0;
             --most) {
            value = value * base + digit;
            ++mAt;
        }
        return value;
    };
    const char16_t letter = mText[mAt];
    if (digitValue(letter, 8) >= 0)
        return characterFromNextStep(static_cast<unsigned char>(digits(8, 3)));
    ++mAt;
    if (letter == 'U')
        return static_cast<char16_t>(digits(16, 4));
    constexpr std::u16string_view kLetters = u"abfnrtv";
    constexpr std::u16string_view kMeanings = u"\a\b\f\n\r\t\v";
    const std::size_t known = kLetters.find(letter);
    return known == std::u16string_view::npos ? letter : kMeanings[known];
}

std::string TextScanner::data()
{
    std::string bytes;
    while (!take('>')) {
        int byte = 0;
        for (int half = 0; half < 2; ++half, ++mAt) {
            const int digit = mAt < mText.size() ? digitValue(mText[mAt], 16) : -1;
            if (digit < 0)
                fault("data is not in pairs of hexadecimal digits");
            byte = byte << 4 | digit;
        }
        bytes.push_back(static_cast<char>(byte));
    }
    return bytes;
}

}
