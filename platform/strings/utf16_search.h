#pragma once

#include "platform/strings/character_set.h"
#include "platform/strings/comparison_stream.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

struct TextRange {
    std::size_t location;
    std::size_t length;
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

struct SearchRules {
    Equivalence equivalence;
    bool backwards = false; ///< the last occurrence instead of the first
    bool anchored = false; ///< only at the beginning, or at the end when backwards
};

/// Where `sought` occurs in `text`; null when it does not, and always for an empty `sought`.
///
/// Under canonical equivalence the range found may be longer or shorter than `sought`, and it never ends
/// in front of a combining mark: "e" is not in "e" + U+0301. A `sought` that begins with a combining mark
/// has no characters of its own to be equivalent to and is matched unit by unit.
std::optional<TextRange> findText(std::u16string_view text, std::u16string_view sought, SearchRules rules);

/// The first (or last) character of `text` that is in `set`: one unit, or two for a surrogate pair.
std::optional<TextRange> findCharacter(std::u16string_view text, const CharacterSet& set, SearchRules rules);

/// The pieces of `text` between the occurrences of `separator`, which do not overlap; empty pieces are kept.
/// One piece, the whole, when the separator is empty or does not occur.
std::vector<std::u16string_view> splitText(std::u16string_view text, std::u16string_view separator);

/// `text` without the members of `set` at both ends.
std::u16string_view trimmedText(std::u16string_view text, const CharacterSet& set);

}
