#include "platform/strings/character_set.h"

#include "platform/strings/code_points.h"

#include <algorithm>
#include <unicode/uchar.h>

namespace platform {
namespace {

constexpr char32_t kEnd = 0x110000;

}

CharacterSet::CharacterSet(Boundaries boundaries) : mBoundaries(std::move(boundaries))
{
    for (char32_t point = 0; point < kAsciiCount; ++point)
        mAscii[point / 64] |= std::uint64_t(containsBeyondAscii(point)) << (point % 64);
}

bool CharacterSet::containsBeyondAscii(char32_t point) const
{
    auto after = std::upper_bound(mBoundaries.begin(), mBoundaries.end(), point);
    return (after - mBoundaries.begin()) % 2 == 1 && point < kEnd;
}

CharacterSet CharacterSet::withCharacters(std::u16string_view text)
{
    std::vector<char32_t> points;
    for (std::size_t at = 0; at < text.size();) {
        points.push_back(takeCodePoint(text, at));
    }
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());

    Boundaries boundaries;
    for (char32_t point : points) {
        if (!boundaries.empty() && boundaries.back() == point)
            boundaries.back() = point + 1;
        else
            boundaries.insert(boundaries.end(), { point, point + 1 });
    }
    return CharacterSet(std::move(boundaries));
}

CharacterSet CharacterSet::withRange(char32_t first, std::size_t count)
{
    if (first >= kEnd || count == 0)
        return {};
    return CharacterSet(Boundaries { first, count < kEnd - first ? first + char32_t(count) : kEnd });
}

CharacterSet CharacterSet::withCategories(std::uint32_t mask)
{
    struct Collector {
        std::uint32_t mask;
        Boundaries boundaries;
    } collector { mask, {} };
    auto collect = [](const void* context, UChar32 start, UChar32 limit, UCharCategory category) -> UBool {
        auto& [wanted, boundaries] = *static_cast<Collector*>(const_cast<void*>(context));
        if (!((1U << category) & wanted))
            return true;
        if (!boundaries.empty() && boundaries.back() == char32_t(start))
            boundaries.back() = char32_t(limit);
        else
            boundaries.insert(boundaries.end(), { char32_t(start), char32_t(limit) });
        return true;
    };
    u_enumCharTypes(collect, &collector);
    return CharacterSet(std::move(collector.boundaries));
}

const CharacterSet& CharacterSet::whitespace()
{
    static const CharacterSet set(Boundaries { 0x0009, 0x000A, 0x0020, 0x0021, 0x00A0, 0x00A1, 0x1680, 0x1681,
        0x2000, 0x200C, 0x202F, 0x2030, 0x205F, 0x2060, 0x3000, 0x3001 });
    return set;
}

const CharacterSet& CharacterSet::whitespaceAndNewline()
{
    static const CharacterSet set =
        whitespace().unitedWith(CharacterSet(Boundaries { 0x000A, 0x000E, 0x0085, 0x0086, 0x2028, 0x202A }));
    return set;
}

const CharacterSet& CharacterSet::control()
{
    static const CharacterSet set = withCategories(U_GC_CC_MASK | U_GC_CF_MASK);
    return set;
}

const CharacterSet& CharacterSet::lowercaseLetter()
{
    static const CharacterSet set = withCategories(U_GC_LL_MASK);
    return set;
}

const CharacterSet& CharacterSet::decimalDigit()
{
    static const CharacterSet set = withCategories(U_GC_ND_MASK);
    return set;
}

template<typename Keep> CharacterSet CharacterSet::combinedWith(const CharacterSet& other, Keep keep) const
{
    const Boundaries& a = mBoundaries;
    const Boundaries& b = other.mBoundaries;
    Boundaries result;
    for (std::size_t i = 0, j = 0; i < a.size() || j < b.size();) {
        char32_t at = std::min(i < a.size() ? a[i] : kEnd, j < b.size() ? b[j] : kEnd);
        i += i < a.size() && a[i] == at;
        j += j < b.size() && b[j] == at;
        bool member = keep(i % 2 == 1, j % 2 == 1);
        if (member != (result.size() % 2 == 1))
            result.push_back(at);
    }
    return CharacterSet(std::move(result));
}

CharacterSet CharacterSet::inverted() const
{
    return combinedWith(withRange(0, kEnd), [](bool here, bool everywhere) { return everywhere && !here; });
}

CharacterSet CharacterSet::unitedWith(const CharacterSet& other) const
{
    return combinedWith(other, [](bool here, bool there) { return here || there; });
}

std::size_t CharacterSet::hash() const
{
    std::u32string_view boundaries(mBoundaries.data(), mBoundaries.size());
    return std::hash<std::u32string_view> {}(boundaries);
}

}
