#pragma once

#include "LUMPlatform/NSString.h"

class LUMFileRef;

namespace lum {

/// A place in a bundle, by the folder it is in, which is held open: what is read, written or removed there is
/// so in that folder, whoever renames folders or puts links on the way meanwhile.
class HeldPlace {
public:
    /// The place at `inside`, a path that begins in the bundle. That was at `path` a moment ago.
    HeldPlace(const LUMFileRef& bundle, const NSRef<NSString>& path, const NSRef<NSString>& inside);
    ~HeldPlace();
    HeldPlace(const HeldPlace&) = delete;
    HeldPlace& operator=(const HeldPlace&) = delete;

    /// A path to the place as long as this lives; null when the folder is not there, or not in the bundle.
    const NSRef<NSString>& file() const { return mFile; }

private:
    int mFolder = -1;
    NSRef<NSString> mFile;
};

}
