// Attributes of files, and files and folders as a whole.
#include "LUMPlatform/NSFileManager.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/file_attributes.h"
#include "platform/files/file_items.h"
#include "platform/files/system_path.h"
#include "platform/values/errno_status.h"

#include <algorithm>
#include <fcntl.h>

namespace {

using platform::systemPath;
using platform::TreeSystem;

/// A slash at its end would have the system follow a link.
std::string itemPath(const NSRef<NSString>& path)
{
    const std::string bytes = systemPath(path);
    return bytes.substr(0, std::max<std::size_t>(bytes.find_last_not_of('/') + 1, 1));
}

/// Whether `problem`, 0 or a negative errno, is none.
bool succeeded(int problem, NSRef<NSError>* error)
{
    return problem == 0 || platform::fail(error, platform::statusFromErrno(-problem));
}

}

bool NSFileManager::createFileAtPath(
    const NSRef<NSString>& path, const NSRef<NSData>& contents, const NSRef<NSDictionary>& attributes) const
{
    const auto bytes = contents ? contents : NSData::data();
    return bytes->writeToFile(path, true) && (!attributes || setAttributes(attributes, path));
}

NSRef<NSDictionary> NSFileManager::attributesOfItemAtPath(
    const NSRef<NSString>& path, NSRef<NSError>* error) const
{
    TreeSystem::Details details;
    if (!succeeded(TreeSystem::real().details(AT_FDCWD, itemPath(path), details), error))
        return nullptr;
    return platform::attributesOf(details);
}

bool NSFileManager::setAttributes(
    const NSRef<NSDictionary>& attributes, const NSRef<NSString>& path, NSRef<NSError>* error) const
{
    const auto given = attributes ? attributes : NSDictionary::dictionary();
    return succeeded(platform::applyAttributes(TreeSystem::real(), systemPath(path), *given), error);
}

bool NSFileManager::copyItemAtPath(
    const NSRef<NSString>& from, const NSRef<NSString>& to, NSRef<NSError>* error) const
{
    return succeeded(platform::copyItem(TreeSystem::real(), systemPath(from), systemPath(to)), error);
}

bool NSFileManager::moveItemAtPath(
    const NSRef<NSString>& from, const NSRef<NSString>& to, NSRef<NSError>* error) const
{
    return succeeded(platform::moveItem(TreeSystem::real(), systemPath(from), systemPath(to)), error);
}

bool NSFileManager::removeItemAtPath(const NSRef<NSString>& path, NSRef<NSError>* error) const
{
    return succeeded(platform::removeItem(TreeSystem::real(), systemPath(path)), error);
}
