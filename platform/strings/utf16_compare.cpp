#include "platform/strings/utf16_compare.h"

#include <cstdint>

namespace platform {
namespace {

using Kind = Parting::Kind;

bool isDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

char16_t asciiLowercase(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 0x20) : unit;
}

/// The value of the digits at `at`, which moves behind them.
/// Deliberate: the value wraps modulo 2 to the power 64, as stored orders expect; it does not saturate.
uint64_t takeDigits(std::u16string_view text, size_t& at)
{
    uint64_t value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at)
        value = value * 10 + (text[at] - u'0');
    return value;
}

/// The two texts and how far both have been read.
class Walk {
public:
    Walk(std::u16string_view first, size_t firstStart, std::u16string_view second, ComparisonRules rules)
        : mFirst(first), mSecond(second), mRules(rules), i(firstStart)
    {
    }

    Parting run()
    {
        Kind kind;
        while (!walkUnits(kind) && !walkStreams(kind)) { }
        return { kind, i };
    }

private:
    /// Passes over what agrees unit by unit. False, with both texts at a segment start, where code units
    /// alone cannot tell.
    bool walkUnits(Kind& kind)
    {
        size_t mark = i; // Behind it, only equal units have been passed: both texts can step back to it.
        for (; i < mFirst.size() && j < mSecond.size(); ++i, ++j) {
            char16_t x = mFirst[i];
            char16_t y = mSecond[j];
            if (mRules.numeric && isDigit(x) && isDigit(y)) {
                uint64_t left = takeDigits(mFirst, i);
                uint64_t right = takeDigits(mSecond, j);
                if (left != right)
                    return part(kind, left < right);
                mark = i--;
                --j;
                continue;
            }
            if (x == y)
                continue;
            if (x >= 0x80 || y >= 0x80)
                break;
            if (mRules.equivalence.ignoresCase) {
                x = asciiLowercase(x);
                y = asciiLowercase(y);
            }
            if (x != y)
                return part(kind, x < y);
        }
        while (i > mark && !(isSegmentStart(mFirst, i) && isSegmentStart(mSecond, j))) {
            --i;
            --j;
        }
        return hasEnded(kind);
    }

    /// Passes over whole segments until both texts are at the start of one.
    bool walkStreams(Kind& kind)
    {
        ComparisonStream left(mFirst, i, mRules.equivalence);
        ComparisonStream right(mSecond, j, mRules.equivalence);
        do {
            if (left.current() != right.current())
                return part(kind, left.current() < right.current());
            left.advance();
            right.advance();
        } while (!left.isAtSegmentStart() || !right.isAtSegmentStart());
        i = left.segmentStart();
        j = right.segmentStart();
        return hasEnded(kind);
    }

    bool isSegmentStart(std::u16string_view text, size_t at) const
    {
        return ComparisonStream::isSegmentStart(text, at, mRules.equivalence);
    }

    static bool part(Kind& kind, bool isLess)
    {
        kind = isLess ? Kind::FirstIsLess : Kind::FirstIsGreater;
        return true;
    }

    /// Both texts are at a segment start.
    bool hasEnded(Kind& kind) const
    {
        bool firstEnds = i == mFirst.size();
        bool secondEnds = j == mSecond.size();
        if (!firstEnds && !secondEnds)
            return false;
        kind = firstEnds && secondEnds ? Kind::BothEnd : firstEnds ? Kind::FirstEnds : Kind::SecondEnds;
        return true;
    }

    std::u16string_view mFirst;
    std::u16string_view mSecond;
    ComparisonRules mRules;
    size_t i;
    size_t j = 0;
};

}

Parting walkInStep(
    std::u16string_view first, size_t firstStart, std::u16string_view second, ComparisonRules rules)
{
    return Walk(first, firstStart, second, rules).run();
}

int compareUtf16(std::u16string_view a, std::u16string_view b, ComparisonRules rules)
{
    switch (walkInStep(a, 0, b, rules).kind) {
    case Kind::FirstIsLess:
    case Kind::FirstEnds:
        return -1;
    case Kind::FirstIsGreater:
    case Kind::SecondEnds:
        return 1;
    case Kind::BothEnd:
        return 0;
    }
    return 0;
}

}
