#pragma once

#include "LUMPlatform/NSString.h"

#include <vector>

namespace lum {

/// What a folder of a bundle holds of its own.
struct BundleEntry {
    NSRef<NSString> path;
    bool isFolder = false;
};

/// The entries of a folder in the order of its listing, without hidden ones and without links, be they
/// dangling ones. Of what goes meanwhile nothing is told. None for null, and for what is no folder.
std::vector<BundleEntry> entriesIn(const NSRef<NSString>& folder);

}
