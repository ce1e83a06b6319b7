#include "document/bundle_entries.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMFoundation/LUMFileRefEnumerator.h"

#include <filesystem>

namespace fs = std::filesystem;

std::vector<lum::BundleEntry> lum::entriesIn(const NSRef<NSString>& folder)
{
    std::vector<BundleEntry> entries;
    const auto fileRef = folder ? LUMFileRef::fileRefWithPath(folder) : nullptr;
    const auto children = fileRef ? fileRef->childEnumerator() : nullptr;
    if (!children)
        return entries;
    for (const NSId& entry : *children) {
        const auto child = NSCast<LUMFileRef>(entry);
        auto path = child->path();
        // The enumerator may end with a hidden entry; whether it does is chance, so none is told.
        if (!path || child->aliasFileRef() || path->lastPathComponent()->hasPrefix("."))
            continue;
        std::error_code problem;
        const auto type = fs::symlink_status(path->utf8(), problem).type();
        if (type != fs::file_type::none && type != fs::file_type::not_found && type != fs::file_type::symlink)
            entries.push_back({ std::move(path), type == fs::file_type::directory });
    }
    return entries;
}
