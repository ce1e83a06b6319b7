#include "document/held_place.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/FSRef.h"
#include "LUMPlatform/NSData.h"
#include "core/status_error.h"
#include "core/statuses.h"
#include "document/bundle_paths.h"
#include "platform/files/retried.h"
#include "platform/files/unfollowed_file.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using platform::Descriptor;

namespace {

constexpr int kAttempts = 3; // with a bundle that is moved again and again
constexpr int kMaxLinks = 40; // as many as the kernel follows

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

Descriptor opened(int in, const std::string& path)
{
    return Descriptor(
        platform::retried([&] { return openat(in, path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
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

Descriptor openedBundle(const LUMFileRef& bundle, NSRef<NSString> path)
{
    for (int attempt = 0; attempt < kAttempts && path; ++attempt, path = bundle.path()) {
        Descriptor folder = opened(AT_FDCWD, path->utf8());
        if (folder && isThat(bundle, folder.number(), whereIs(folder.number())))
            return folder;
    }
    return Descriptor();
}

/// Of a bundle that is moved while the two are looked at, what is told of one says nothing about the other.
bool isInBundle(const Descriptor& bundle, const Descriptor& folder)
{
    std::string root = folder ? whereIs(bundle.number()) : std::string();
    for (int attempt = 0; attempt < kAttempts && !root.empty(); ++attempt) {
        const std::string place = whereIs(folder.number());
        const std::string before = std::exchange(root, whereIs(bundle.number()));
        if (root == before)
            return lum::isWithin(root, place);
    }
    return false;
}

/// A path as that of a folder and a name in it.
std::pair<std::string, std::string> divided(const std::string& path)
{
    const std::size_t name = path.rfind('/') + 1; // 0 without a slash
    return { name == 0 ? "." : path.substr(0, name), path.substr(name) };
}

/// Removes the empty folder that is open, by its name in another one, or the link of that name which leads to
/// it; false when it stays though it is there and empty.
bool removedFolder(int in, const std::string& name, int folder)
{
    struct stat open = {};
    struct stat found = {};
    struct stat entry = {};
    if (fstat(folder, &open) != 0 || fstatat(in, name.c_str(), &found, 0) != 0
        || fstatat(in, name.c_str(), &entry, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT;
    if (open.st_dev != found.st_dev || open.st_ino != found.st_ino)
        return true;
    return unlinkat(in, name.c_str(), S_ISLNK(entry.st_mode) ? 0 : AT_REMOVEDIR) == 0 || errno == ENOENT
        || errno == ENOTEMPTY;
}

}

lum::HeldPlace::HeldPlace(
    const LUMFileRef& bundle, const NSRef<NSString>& path, const NSRef<NSString>& inside)
    : mInside(inside->utf8()), mBundle(openedBundle(bundle, path))
{
    if (mBundle)
        hold(mBundle, mInside);
}

NSRef<NSString> lum::HeldPlace::file() const
{
    return mFile.empty() ? nullptr : NSRef<NSString>(mFile);
}

void lum::HeldPlace::hold(const Descriptor& in, const std::string& place)
{
    const auto [folder, name] = divided(place);
    mFolder = opened(in.number(), folder);
    mFile = isInBundle(mBundle, mFolder) ? pathBy(mFolder.number()) + "/" + name : std::string();
}

/// Goes on to where the link in the place leads, if there is one; false when that is not in the bundle.
bool lum::HeldPlace::follow()
{
    char target[PATH_MAX];
    const ssize_t length = readlink(mFile.c_str(), target, sizeof target);
    if (length < 0)
        return errno == EINVAL; // somebody has put something else there
    hold(mFolder, std::string(target, static_cast<std::size_t>(length)));
    return !mFile.empty();
}

template<typename Action> bool lum::HeldPlace::doThroughLinks(const Action& action, NSRef<NSError>* error)
{
    if (mFile.empty())
        return fail(error, kStatusNotFound);
    for (int links = 0; links <= kMaxLinks; ++links) {
        const platform::Unfollowed done = action();
        if (done != platform::Unfollowed::Link)
            return done == platform::Unfollowed::Done;
        if (!follow())
            break;
    }
    return refuseLink(error);
}

NSRef<NSData> lum::HeldPlace::read(NSRef<NSError>* error, std::size_t largest)
{
    NSRef<NSData> data;
    const auto action = [&] { return platform::readUnfollowed(mFile, data, error, largest); };
    return doThroughLinks(action, error) ? data : nullptr;
}

bool lum::HeldPlace::replace(const NSData& data, NSRef<NSError>* error)
{
    return doThroughLinks([&] { return platform::replaceUnfollowed(mFile, data, error); }, error);
}

bool lum::HeldPlace::removeFolderIfEmpty() const
{
    std::error_code problem;
    if (mFile.empty() || !std::filesystem::is_empty(pathBy(mFolder.number()), problem) || problem)
        return true;
    const auto [above, name] = divided(std::filesystem::path(mInside).parent_path().string());
    const Descriptor holder = opened(mBundle.number(), above);
    const bool isGone = holder ? !isInBundle(mBundle, holder) : holder.number() == -ENOENT;
    return isGone || (holder && removedFolder(holder.number(), name, mFolder.number()));
}
