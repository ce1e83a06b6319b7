#pragma once

#include <array>
#include <ostream>
#include <rapidcheck.h>
#include <string>

/// A text of a property, which RapidCheck shows as its code units.
struct TellingText {
    std::u16string units;

    friend std::ostream& operator<<(std::ostream& stream, const TellingText& text)
    {
        stream << std::hex;
        for (char16_t unit : text.units)
            stream << unsigned(unit) << ' ';
        return stream << std::dec;
    }
};

/// Any code unit at all.
inline rc::Gen<TellingText> anyText()
{
    return rc::gen::map(
        rc::gen::arbitrary<std::vector<std::uint16_t>>(), [](const std::vector<std::uint16_t>& units) {
            return TellingText { { units.begin(), units.end() } };
        });
}

/// A text of code units that comparison, search and scanning treat in ways of their own.
inline rc::Gen<TellingText> tellingText()
{
    static constexpr std::array<char16_t, 34> kUnits = { u'a', u'A', u'b', u'e', u'E', u's', u'f', u'i', u'I',
        u'k', u'0', u'1', u'9', u' ', u'_', u'.', 0x00E9, 0x00C9, 0x00DF, 0x0130, 0x0131, 0x017F, 0x0301,
        0x0323, 0x0345, 0x1EB9, 0x1100, 0x1161, 0xAC00, 0x212A, 0xFB01, 0xD83D, 0xDE00, 0xFFEE };
    auto index = rc::gen::inRange<std::size_t>(0, kUnits.size());
    return rc::gen::map(
        rc::gen::container<std::vector<std::size_t>>(index), [](const std::vector<std::size_t>& indices) {
            TellingText text;
            for (std::size_t i : indices)
                text.units.push_back(kUnits[i]);
            return text;
        });
}

/// A text that differs from `text` in little: a piece of it replaced by another.
inline rc::Gen<TellingText> tellingChange(const TellingText& text)
{
    return rc::gen::map(rc::gen::tuple(rc::gen::arbitrary<std::size_t>(), rc::gen::inRange<std::size_t>(0, 3),
                            rc::gen::resize(2, tellingText())),
        [text](const std::tuple<std::size_t, std::size_t, TellingText>& change) {
            const auto& [place, removed, inserted] = change;
            TellingText changed = text;
            changed.units.replace(place % (text.units.size() + 1), removed, inserted.units);
            return changed;
        });
}

inline TellingText tellingTextOrChange(const TellingText& text)
{
    return *rc::gen::oneOf(tellingText(), tellingChange(text));
}
