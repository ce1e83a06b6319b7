#include "platform/proplists/sorted_entries.h"

#include "LUMPlatform/NSClass.h"
#include "platform/proplists/property_list_fault.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::size_t kHeadUnits = 4;

std::uint64_t headOf(std::u16string_view text)
{
    std::uint64_t head = 0;
    for (std::size_t at = 0; at < kHeadUnits; ++at)
        head = head << 16 | (at < text.size() ? text[at] : 0);
    return head;
}

bool comesBefore(const SortedEntry& a, const SortedEntry& b)
{
    return a.head != b.head ? a.head < b.head : a.key->characters() < b.key->characters();
}

}

void appendSortedEntries(const NSDictionary& dictionary, std::vector<SortedEntry>& entries)
{
    const auto first = static_cast<std::ptrdiff_t>(entries.size());
    for (const auto& [key, value] : dictionary) {
        const auto* text = NSDowncast<NSString>(key.get());
        if (!text)
            throw PropertyListFault(
                "a key of class " + std::string(key->isa().name()) + " in a dictionary is no string");
        entries.push_back({ headOf(text->characters()), text, value.get() });
    }
    std::sort(entries.begin() + first, entries.end(), comesBefore);
}

}
