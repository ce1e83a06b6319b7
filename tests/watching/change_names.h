#pragma once

#include "watching/vnode_changes.h"

#include <string>
#include <utility>

namespace lum {

/// The names of VnodeChange bits in the order watchers report them, as in "WRITE EXTEND"; empty for none.
inline std::string changeNames(std::uint32_t changes)
{
    constexpr std::pair<std::uint32_t, const char*> kNames[] = {
        { kVnodeRename, "RENAME" },
        { kVnodeWrite, "WRITE" },
        { kVnodeDelete, "DELETE" },
        { kVnodeAttrib, "ATTRIB" },
        { kVnodeExtend, "EXTEND" },
        { kVnodeLink, "LINK" },
        { kVnodeRevoke, "REVOKE" },
    };
    std::string text;
    for (const auto& [bit, name] : kNames) {
        if (changes & bit)
            text += (text.empty() ? "" : " ") + std::string(name);
    }
    return text;
}

inline constexpr std::uint32_t kEveryChange = 0x7f;

}
