#pragma once

#include "LUMPlatform/NSString.h"
#include "platform/files/descriptor.h"

#include <cstdint>
#include <string>

class LUMFileRef;
class NSData;
class NSError;

namespace lum {

/// A place in a bundle, by the folder it is in, which is held open: what is read, written or removed there is
/// so in that folder, whoever renames folders or puts links on the way, or in the place itself, meanwhile.
class HeldPlace {
public:
    /// The place at `inside`, a path that begins in the bundle. That was at `path` a moment ago.
    HeldPlace(const LUMFileRef& bundle, const NSRef<NSString>& path, const NSRef<NSString>& inside);
    HeldPlace(const HeldPlace&) = delete;
    HeldPlace& operator=(const HeldPlace&) = delete;

    /// A path to the place as long as this lives, for those who follow no link there; null when the folder is
    /// not there, or not in the bundle.
    NSRef<NSString> file() const;

    // A link in the place is followed as long as it leads into the bundle; then this is the place that it
    // leads to. Other links fail with -5000, and all does with -43 when file() is null.

    /// The bytes of the file in the place, of which there may be `largest`.
    NSRef<NSData> read(NSRef<NSError>* error = nullptr, std::size_t largest = PTRDIFF_MAX);
    /// Gives the file in the place new bytes in one step, or makes it.
    bool replace(const NSData& data, NSRef<NSError>* error = nullptr);

    /// Removes the folder that the place is in, or the link that stands for it, when nothing is in it. What
    /// is there by now in place of that folder stays. False when it is empty and could not be removed.
    bool removeFolderIfEmpty() const;

private:
    void hold(const platform::Descriptor& in, const std::string& place);
    bool follow();
    template<typename Action> bool doThroughLinks(const Action& action, NSRef<NSError>* error);

    const std::string mInside;
    const platform::Descriptor mBundle;
    platform::Descriptor mFolder;
    std::string mFile; ///< Empty when it is not to be used.
};

}
