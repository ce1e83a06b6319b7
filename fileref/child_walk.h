#pragma once

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/FSIterator.h"

namespace lum {

struct Child {
    NSRef<LUMFileRef> fileRef;
    bool isHidden = false;
};

/// The next entry of a folder as a handle: on what it leads to, or on the link itself when that dangles. What
/// goes away meanwhile is passed over. 0, kFSNoMoreItems, or what stood in the way.
OSStatus nextChild(FSIterator& iterator, Child& child);

}
