#include "document/held_place.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/FSRef.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kAttempts = 3; // to open a bundle that is moved again and again

/// A path that leads to what is open, wherever that is.
std::string pathBy(int folder)
{
    return "/proc/self/fd/" + std::to_string(folder);
}

/// Where an open folder is now; empty where the system does not tell.
std::string whereIs(int folder)
{
    char path[PATH_MAX];
    const ssize_t length = readlink(pathBy(folder).c_str(), path, sizeof path);
    return length > 0 && path[0] == '/' ? std::string(path, static_cast<std::size_t>(length)) : std::string();
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
        close(folder);
}

/// Whether the open folder, which is at `place`, is the bundle. Mostly that is where the bundle is found to
/// be; only when it is not, as after a move or when the bundle is named by a link, are the two compared.
bool isThat(const LUMFileRef& bundle, int folder, const std::string& place)
{
    const auto path = bundle.path();
    if (path && path->utf8() == place)
        return true;
    FSRef wanted = *bundle.fsRef();
    FSRef found;
    bool wasAliased = false;
    return FSResolveAliasFile(wanted, true, nullptr, &wasAliased) == 0
        && FSPathMakeRef(pathBy(folder) + "/.", found) == 0 && FSCompareFSRefs(wanted, found) == 0;
}

int openedBundle(const LUMFileRef& bundle, NSRef<NSString> path)
{
    for (int attempt = 0; attempt < kAttempts && path; ++attempt, path = bundle.path()) {
        const int folder = opened(AT_FDCWD, path->utf8());
        if (folder >= 0 && isThat(bundle, folder, whereIs(folder)))
            return folder;
        closeIfOpen(folder);
    }
    return -1;
}

bool isWithin(const std::string& root, const std::string& path)
{
    return !root.empty() && path.starts_with(root)
        && (root == "/" || path.size() == root.size() || path[root.size()] == '/');
}

}

lum::HeldPlace::HeldPlace(
    const LUMFileRef& bundle, const NSRef<NSString>& path, const NSRef<NSString>& inside)
{
    const int root = openedBundle(bundle, path);
    if (root < 0)
        return;
    const std::string place = inside->utf8();
    const std::size_t slash = place.rfind('/');
    mFolder = opened(root, slash == std::string::npos ? "." : place.substr(0, slash));
    if (mFolder >= 0 && isWithin(whereIs(root), whereIs(mFolder)))
        mFile = pathBy(mFolder) + "/" + place.substr(slash + 1); // all of it without a slash
    closeIfOpen(root);
}

lum::HeldPlace::~HeldPlace()
{
    closeIfOpen(mFolder);
}
