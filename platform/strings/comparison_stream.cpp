#include "platform/strings/comparison_stream.h"

#include "platform/strings/code_points.h"

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

/// Runs an ICU text function that is told the room and answers with the room it needs.
template<typename Function> std::u16string resultOf(std::u16string_view source, Function function)
{
    std::u16string result(source.size() * 3 + 4, u'\0');
    for (;;) {
        UErrorCode error = U_ZERO_ERROR;
        int32_t length = function(result.data(), static_cast<int32_t>(result.size()), &error);
        result.resize(static_cast<size_t>(length));
        if (error != U_BUFFER_OVERFLOW_ERROR)
            return result;
    }
}

std::u16string decomposed(std::u16string_view text)
{
    return resultOf(text, [&](char16_t* out, int32_t room, UErrorCode* error) {
        return unorm2_normalize(
            decomposition(), text.data(), static_cast<int32_t>(text.size()), out, room, error);
    });
}

std::u16string folded(std::u16string_view text)
{
    return resultOf(text, [&](char16_t* out, int32_t room, UErrorCode* error) {
        auto length = static_cast<int32_t>(text.size());
        return u_strFoldCase(out, room, text.data(), length, U_FOLD_CASE_DEFAULT, error);
    });
}

}

bool isCombiningBoundary(std::u16string_view text, size_t at)
{
    if (at == text.size() || text[at] < kFirstMark)
        return true;
    if (isInsidePair(text, at))
        return false;
    return unorm2_hasBoundaryBefore(decomposition(), static_cast<UChar32>(takeCodePoint(text, at)));
}

bool ComparisonStream::isSegmentStart(std::u16string_view text, size_t at, Equivalence equivalence)
{
    if (at == 0 || at == text.size() || text[at - 1] < 0x80)
        return true;
    return equivalence.canonical ? isCombiningBoundary(text, at) : !isInsidePair(text, at);
}

ComparisonStream::ComparisonStream(std::u16string_view text, size_t start, Equivalence equivalence)
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

size_t ComparisonStream::findSegmentEnd() const
{
    size_t end = nextCodePoint(mText, mStart);
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
        mCurrent = mEquivalence.ignoresCase && first >= u'A' && first <= u'Z' ? first + 0x20 : first;
        return;
    }
    if (mEquivalence.canonical)
        mSegment = mStorage = decomposed(mSegment);
    if (mEquivalence.ignoresCase) {
        mSegment = mStorage = folded(mSegment);
        if (mEquivalence.canonical)
            mSegment = mStorage = decomposed(mSegment);
    }
    mCurrent = static_cast<int>(takeCodePoint(mSegment, mNext));
}

}
