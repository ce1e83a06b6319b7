#include "platform/strings/utf16_compare.h"

#include "platform/strings/code_points.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace platform {
namespace {

using Kind = Parting::Kind;

bool isDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

/// The value of the digits at `at`, which moves behind them.
std::uint64_t takeDigits(std::u16string_view text, std::size_t& at)
{
    // Deliberate: the value wraps modulo 2 to the power 64, as stored orders expect; it does not saturate.
    std::uint64_t value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at)
        value = value * 10 + (text[at] - u'0');
    return value;
}

/// The two texts and how far both have been read.
class Walk {
public:
    Walk(std::u16string_view first, std::size_t firstStart, std::u16string_view second, ComparisonRules rules)
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
        std::size_t mark =
            i; // Behind it, what has been passed is of one length in both: they can step back to it.
        for (;;) {
            skipEqualUnits();
            if (mRules.numeric && stepBackToDigits(mark)) {
                std::uint64_t left = takeDigits(mFirst, i);
                std::uint64_t right = takeDigits(mSecond, j);
                if (left != right)
                    return part(kind, left < right);
                mark = i;
                continue;
            }
            if (i == mFirst.size() || j == mSecond.size())
                break;
            char16_t x = mFirst[i];
            char16_t y = mSecond[j];
            if (x >= 0x80 || y >= 0x80)
                break;
            if (mRules.equivalence.ignoresCase) {
                x = asciiLowercase(x);
                y = asciiLowercase(y);
            }
            if (x != y)
                return part(kind, x < y);
            ++i;
            ++j;
        }
        while (i > mark && !(isSegmentStart(mFirst, i) && isSegmentStart(mSecond, j))) {
            --i;
            --j;
        }
        return hasEnded(kind);
    }

    void skipEqualUnits()
    {
        constexpr std::size_t kWord = sizeof(std::uint64_t) / sizeof(char16_t);
        std::size_t left = std::min(mFirst.size() - i, mSecond.size() - j);
        for (; left >= kWord && wordAt(mFirst, i) == wordAt(mSecond, j); left -= kWord) {
            i += kWord;
            j += kWord;
        }
        for (; left > 0 && mFirst[i] == mSecond[j]; --left) {
            ++i;
            ++j;
        }
    }

    static std::uint64_t wordAt(std::u16string_view text, std::size_t at)
    {
        std::uint64_t word;
        std::memcpy(&word, text.data() + at, sizeof word);
        return word;
    }

    /// Steps back to where the digits began that are passed or met here; false when there are none in one of
    /// the texts.
    bool stepBackToDigits(std::size_t mark)
    {
        while (i > mark && isDigit(mFirst[i - 1])) {
            --i;
            --j;
        }
        return i < mFirst.size() && j < mSecond.size() && isDigit(mFirst[i]) && isDigit(mSecond[j]);
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

    bool isSegmentStart(std::u16string_view text, std::size_t at) const
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
    std::size_t i;
    std::size_t j = 0;
};

}

Parting walkInStep(
    std::u16string_view first, std::size_t firstStart, std::u16string_view second, ComparisonRules rules)
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
