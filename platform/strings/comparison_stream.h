#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// Which differences between two texts do not count.
struct Equivalence {
    bool canonical = true; ///< e + U+0301 is U+00E9
    bool ignoresCase = false; ///< full case folding without a locale: U+00DF is "ss"
};

/// A text as the code points that count in a comparison: decomposed, in canonical order, and folded.
///
/// The text is taken segment by segment. A segment begins where nothing before it can reorder or compose
/// with it, and every ASCII character is one of its own; so where the segments lie depends on the text
/// alone, not on where reading began, and comparing streams is a lawful order. A run of combining marks
/// longer than kLongestSegment is taken in pieces, which keeps hostile text from costing quadratic time.
class ComparisonStream {
public:
    static constexpr int kEnd = -1; ///< Smaller than any code point: a prefix sorts first.

    /// `start` is a segment start of `text`, which outlives the stream.
    ComparisonStream(std::u16string_view text, std::size_t start, Equivalence equivalence);
    ComparisonStream(const ComparisonStream&) = delete;
    ComparisonStream& operator=(const ComparisonStream&) = delete;

    /// The code point here, kEnd behind the last.
    int current() const { return mCurrent; }
    void advance();
    /// True when current() is the first of its segment, or the end.
    bool isAtSegmentStart() const { return mIsAtSegmentStart; }
    /// Where the segment of current() begins.
    std::size_t segmentStart() const { return mStart; }

    static bool isSegmentStart(std::u16string_view text, std::size_t at, Equivalence equivalence);

private:
    static constexpr std::size_t kLongestSegment = 1024;

    static constexpr int kRoom = 32; // for any one character; longer segments take memory of their own
    using Buffer = std::array<char16_t, kRoom>;

    void readSegment();
    void decompose();
    void fold();
    template<typename Function> void rewrite(Buffer& buffer, Function function);
    std::size_t findSegmentEnd() const;

    std::u16string_view mText;
    Equivalence mEquivalence;
    std::size_t mStart; // of the segment in mText
    std::size_t mEnd;
    std::u16string_view mSegment; // as it counts: a piece of mText, or in one of the buffers below
    std::size_t mNext = 0; // in mSegment, behind current()
    int mCurrent = kEnd;
    bool mIsAtSegmentStart = true;
    Buffer mDecomposed;
    Buffer mFolded;
    std::u16string mLong;
};

/// True when what stands at `at` cannot combine with the character before it; so at the end of the text.
bool isCombiningBoundary(std::u16string_view text, std::size_t at);

}
