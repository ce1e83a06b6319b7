#include "LUMPlatform/NSFileManager.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSString.h"
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
};

/// The bytes of a path; empty, which names nothing, for null and for a text that the system would cut off.
std::string bytesOf(const NSRef<NSString>& path)
{
    std::string bytes = path ? path->utf8() : std::string();
    return bytes.find('\0') == std::string::npos ? bytes : std::string();
}

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

/// Makes the folder and those above that are missing; a folder that is there is fine. Another process may
/// make the same folders meanwhile. Returns 0 or an errno value.
int makeFolders(const std::string& path)
{
    int error = makeFolder(path);
    if (error == ENOENT) {
        const size_t end = path.find_last_not_of('/');
        const size_t slash = end == std::string::npos ? end : path.rfind('/', end);
        if (slash == std::string::npos || slash == 0)
            return error;
        if (const int errorAbove = makeFolders(path.substr(0, slash)))
            return errorAbove;
        error = makeFolder(path);
    }
    return error == EEXIST && isFolder(path).value_or(false) ? 0 : error;
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
    const std::optional<bool> found = isFolder(bytesOf(path));
    if (found && isDirectory)
        *isDirectory = *found;
    return found.has_value();
}

bool NSFileManager::createDirectoryAtPath(const NSRef<NSString>& path, bool createIntermediates,
    const NSRef<NSDictionary>& /*attributes*/, NSRef<NSError>* error) const
{
    const std::string bytes = bytesOf(path);
    const int problem = createIntermediates ? makeFolders(bytes) : makeFolder(bytes);
    return problem == 0 || fail(error, statusFromErrno(problem));
}

NSRef<NSArray> NSFileManager::contentsOfDirectoryAtPath(
    const NSRef<NSString>& path, NSRef<NSError>* error) const
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(bytesOf(path).c_str()), closedir);
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
