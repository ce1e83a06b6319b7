#include "platform/strings/comparison_stream.h"

#include "platform/strings/code_points.h"

#include <algorithm>
#include <cstdlib>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

namespace platform {
namespace {

constexpr char16_t kFirstMark = 0x300; // nothing below combines with what stands before it

const UNormalizer2* decomposition()
{
    static const UNormalizer2* const instance = [] {
        UErrorCode error = U_ZERO_ERROR;
        const UNormalizer2* nfd = unorm2_getNFDInstance(&error);
        if (U_FAILURE(error))
            std::abort(); // the data is compiled into the library, so this is a broken installation
        return nfd;
    }();
    return instance;
}

/// Whether asciiLowercase is all of folding: ASCII and the marks of Latin letters, but not U+0345, which
/// folds to a letter.
bool foldsAsAsciiDoes(char16_t unit)
{
    return unit < 0x80 || (unit >= kFirstMark && unit < 0x370 && unit != 0x345);
}

std::int32_t lengthOf(std::u16string_view text)
{
    return static_cast<std::int32_t>(text.size());
}

}

bool isCombiningBoundary(std::u16string_view text, std::size_t at)
{
    if (at == text.size() || text[at] < kFirstMark)
        return true;
    if (isInsidePair(text, at))
        return false;
    return unorm2_hasBoundaryBefore(decomposition(), static_cast<UChar32>(takeCodePoint(text, at)));
}

bool ComparisonStream::isSegmentStart(std::u16string_view text, std::size_t at, Equivalence equivalence)
{
    if (at == 0 || at == text.size() || text[at - 1] < 0x80)
        return true;
    return equivalence.canonical ? isCombiningBoundary(text, at) : !isInsidePair(text, at);
}

ComparisonStream::ComparisonStream(std::u16string_view text, std::size_t start, Equivalence equivalence)
    : mText(text), mEquivalence(equivalence), mStart(start), mEnd(start)
{
    readSegment();
}

void ComparisonStream::advance()
{
    if (mNext < mSegment.size()) {
        mCurrent = static_cast<int>(takeCodePoint(mSegment, mNext));
        mIsAtSegmentStart = false;
        return;
    }
    mStart = mEnd;
    readSegment();
}

std::size_t ComparisonStream::findSegmentEnd() const
{
    std::size_t end = nextCodePoint(mText, mStart);
    if (mText[mStart] < 0x80 || !mEquivalence.canonical)
        return end;
    while (end - mStart < kLongestSegment && !isCombiningBoundary(mText, end))
        end = nextCodePoint(mText, end);
    return end;
}

void ComparisonStream::readSegment()
{
    mIsAtSegmentStart = true;
    mNext = 0;
    if (mStart == mText.size()) {
        mSegment = {};
        mCurrent = kEnd;
        return;
    }

    mEnd = findSegmentEnd();
    mSegment = mText.substr(mStart, mEnd - mStart);
    char16_t first = mSegment.front();
    if (first < 0x80) {
        mNext = 1;
        mCurrent = mEquivalence.ignoresCase ? asciiLowercase(first) : first;
        return;
    }
    if (mEquivalence.canonical)
        decompose();
    if (mEquivalence.ignoresCase)
        fold();
    mCurrent = static_cast<int>(takeCodePoint(mSegment, mNext));
}

void ComparisonStream::decompose()
{
    if (nextCodePoint(mSegment, 0) < mSegment.size()) {
        rewrite(
            mDecomposed, [](std::u16string_view text, char16_t* out, std::int32_t room, UErrorCode* error) {
                return unorm2_normalize(decomposition(), text.data(), lengthOf(text), out, room, error);
            });
        return;
    }
    std::size_t end = 0;
    auto point = static_cast<UChar32>(takeCodePoint(mSegment, end));
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t length = unorm2_getDecomposition(decomposition(), point, mDecomposed.data(), kRoom, &error);
    if (length >= 0)
        mSegment = { mDecomposed.data(), static_cast<std::size_t>(length) };
}

/// What is decomposed stays so: no folding makes a combining mark.
void ComparisonStream::fold()
{
    if (mSegment.size() <= mFolded.size()
        && std::all_of(mSegment.begin(), mSegment.end(), foldsAsAsciiDoes)) {
        auto* end = std::transform(mSegment.begin(), mSegment.end(), mFolded.data(), asciiLowercase);
        mSegment = { mFolded.data(), end };
        return;
    }
    rewrite(mFolded, [](std::u16string_view text, char16_t* out, std::int32_t room, UErrorCode* error) {
        return u_strFoldCase(out, room, text.data(), lengthOf(text), U_FOLD_CASE_DEFAULT, error);
    });
}

/// Replaces the segment by what an ICU text function makes of it: in `buffer`, or in memory of its own when
/// that is too small.
template<typename Function> void ComparisonStream::rewrite(Buffer& buffer, Function function)
{
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t length = function(mSegment, buffer.data(), kRoom, &error);
    if (error != U_BUFFER_OVERFLOW_ERROR) {
        mSegment = { buffer.data(), static_cast<std::size_t>(length) };
        return;
    }
    error = U_ZERO_ERROR;
    std::u16string rewritten(static_cast<std::size_t>(length), u'\0');
    function(mSegment, rewritten.data(), length, &error);
    mLong = std::move(rewritten);
    mSegment = mLong;
}

}
