#include "document/held_place.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/FSRef.h"
#include "document/bundle_paths.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int kAttempts = 3; // to open a bundle that is moved again and again

/// A path that leads to what is open, wherever that is.
std::string pathBy(int folder)
{
    return "/proc/self/fd/" + std::to_string(folder);
}

/// Where an open folder is now; empty where the system does not tell.
fs::path whereIs(int folder)
{
    std::error_code problem;
    return fs::read_symlink(pathBy(folder), problem);
}

int opened(int in, const std::string& path)
{
    for (;;) {
        const int folder = openat(in, path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        if (folder >= 0 || errno != EINTR)
            return folder;
    }
}

void closeIfOpen(int folder)
{
    if (folder >= 0)
        ::close(folder);
}

bool isThat(const LUMFileRef& bundle, int folder)
{
    FSRef wanted = *bundle.fsRef(); // which may be on a link
    FSRef found;
    bool wasAliased = false;
    return FSResolveAliasFile(wanted, true, nullptr, &wasAliased) == 0
        && FSPathMakeRef(pathBy(folder) + "/.", found) == 0 && FSCompareFSRefs(wanted, found) == 0;
}

int openedBundle(const LUMFileRef& bundle)
{
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const auto path = bundle.path();
        const int folder = path ? opened(AT_FDCWD, path->utf8()) : -1;
        if (folder >= 0 && isThat(bundle, folder))
            return folder;
        closeIfOpen(folder);
    }
    return -1;
}

}

lum::HeldPlace::HeldPlace(const LUMFileRef& bundle, const NSRef<NSString>& inside)
{
    const int root = openedBundle(bundle);
    if (root < 0)
        return;
    const fs::path place = inside->utf8();
    mFolder = opened(root, "." / place.parent_path());
    const fs::path rootNow = whereIs(root);
    if (mFolder >= 0 && !rootNow.empty() && isWithin(rootNow, whereIs(mFolder)))
        mFile = pathBy(mFolder) + "/" + place.filename().string();
    closeIfOpen(root);
}

lum::HeldPlace::~HeldPlace()
{
    closeIfOpen(mFolder);
}
