#include "LUMPlatform/NSFileManager.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSDirectoryEnumerator.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/system_path.h"
#include "platform/objects/live_objects.h"
#include "platform/values/errno_status.h"

#include <cerrno>
#include <dirent.h>
#include <memory>
#include <optional>
#include <sys/stat.h>

namespace {

using platform::fail;
using platform::statusFromErrno;
using platform::systemPath;

bool fileExists(const NSFileManager& manager, const NSRef<NSString>& path)
{
    return manager.fileExistsAtPath(path);
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"fileExistsAtPath:", &fileExists>(),
    NSMethodOf<"fileExistsAtPath:isDirectory:", &NSFileManager::fileExistsAtPath>(),
    NSMethodOf<"createDirectoryAtPath:withIntermediateDirectories:attributes:error:",
        &NSFileManager::createDirectoryAtPath>(),
    NSMethodOf<"contentsOfDirectoryAtPath:error:", &NSFileManager::contentsOfDirectoryAtPath>(),
    NSMethodOf<"displayNameAtPath:", &NSFileManager::displayNameAtPath>(),
    NSMethodOf<"createFileAtPath:contents:attributes:", &NSFileManager::createFileAtPath>(),
    NSMethodOf<"enumeratorAtPath:", &NSFileManager::enumeratorAtPath>(),
    NSMethodOf<"attributesOfItemAtPath:error:", &NSFileManager::attributesOfItemAtPath>(),
    NSMethodOf<"setAttributes:ofItemAtPath:error:", &NSFileManager::setAttributes>(),
    NSMethodOf<"copyItemAtPath:toPath:error:", &NSFileManager::copyItemAtPath>(),
    NSMethodOf<"moveItemAtPath:toPath:error:", &NSFileManager::moveItemAtPath>(),
    NSMethodOf<"removeItemAtPath:error:", &NSFileManager::removeItemAtPath>(),
};

/// Whether it is a folder; empty when nothing is there.
std::optional<bool> isFolder(const std::string& path)
{
    struct stat info;
    if (stat(path.c_str(), &info) != 0)
        return std::nullopt;
    return S_ISDIR(info.st_mode);
}

/// Returns 0 or an errno value.
int makeFolder(const std::string& path)
{
    return mkdir(path.c_str(), 0777) == 0 ? 0 : errno;
}

/// The path of the folder that `path` is in; empty when it has none to make.
std::string folderOf(const std::string& path)
{
    const std::size_t end = path.find_last_not_of('/');
    const std::size_t slash = end == std::string::npos ? end : path.rfind('/', end);
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

/// Makes the folder and those above that are missing; a folder that is there is fine. Another process may
/// make the same folders meanwhile. Returns 0 or an errno value.
int makeFolders(const std::string& path)
{
    std::vector<std::string> missing { path };
    for (std::size_t steps = 0; !missing.empty(); ++steps) {
        if (steps > 2 * path.size() + 2)
            return ENOENT; // somebody removes them as fast as they are made
        const int error = makeFolder(missing.back());
        const std::string above = error == ENOENT ? folderOf(missing.back()) : std::string();
        if (!above.empty())
            missing.push_back(above);
        else if (error == 0 || (error == EEXIST && isFolder(missing.back()).value_or(false)))
            missing.pop_back();
        else
            return error;
    }
    return 0;
}

}

const NSClass& NSFileManager::classObject()
{
    static const NSClass& type = NSClass::define("NSFileManager", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<NSFileManager> NSFileManager::defaultManager()
{
    static NSFileManager* const manager = platform::makeImmortal(NSMake<NSFileManager>());
    return NSShare(manager);
}

bool NSFileManager::fileExistsAtPath(const NSRef<NSString>& path, bool* isDirectory) const
{
    const std::optional<bool> found = isFolder(systemPath(path));
    if (found && isDirectory)
        *isDirectory = *found;
    return found.has_value();
}

NSRef<NSString> NSFileManager::displayNameAtPath(const NSRef<NSString>& path) const
{
    return path ? path->lastPathComponent() : NSString::string();
}

bool NSFileManager::createDirectoryAtPath(const NSRef<NSString>& path, bool createIntermediates,
    const NSRef<NSDictionary>& attributes, NSRef<NSError>* error) const
{
    const std::string bytes = systemPath(path);
    const int problem = createIntermediates ? makeFolders(bytes) : makeFolder(bytes);
    if (problem != 0)
        return fail(error, statusFromErrno(problem));
    return !attributes || setAttributes(attributes, path, error);
}

NSRef<NSArray> NSFileManager::contentsOfDirectoryAtPath(
    const NSRef<NSString>& path, NSRef<NSError>* error) const
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(systemPath(path).c_str()), closedir);
    if (!folder) {
        const int problem = errno;
        fail(error, statusFromErrno(problem));
        return nullptr;
    }
    std::vector<NSId> names;
    errno = 0;
    while (const dirent* entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            if (const auto text = NSString::stringWithUTF8String(name))
                names.emplace_back(text);
        }
        errno = 0;
    }
    if (const int problem = errno) {
        fail(error, statusFromErrno(problem));
        return nullptr;
    }
    return NSArray::arrayWithObjects(std::move(names));
}
