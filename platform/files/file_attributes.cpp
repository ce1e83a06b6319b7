#include "platform/files/file_attributes.h"

#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSFileAttributes.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"

#include <cerrno>
#include <cmath>
#include <sys/stat.h>

namespace platform {

namespace {

constexpr double kNanosecond = 1e-9;

const NSStringConstant& typeOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return NSFileTypeDirectory;
    case S_IFREG:
        return NSFileTypeRegular;
    case S_IFLNK:
        return NSFileTypeSymbolicLink;
    case S_IFSOCK:
        return NSFileTypeSocket;
    case S_IFCHR:
        return NSFileTypeCharacterSpecial;
    case S_IFBLK:
        return NSFileTypeBlockSpecial;
    default:
        return NSFileTypeUnknown;
    }
}

NSRef<NSDate> dateOf(const timespec& time)
{
    const double since1970 = static_cast<double>(time.tv_sec) - NSTimeIntervalSince1970;
    return NSDate::dateWithTimeIntervalSinceReferenceDate(
        since1970 + static_cast<double>(time.tv_nsec) * kNanosecond);
}

/// Null for a date that no file can have.
std::optional<timespec> timeOf(const NSDate& date)
{
    const double since1970 = date.timeIntervalSinceReferenceDate() + NSTimeIntervalSince1970;
    constexpr double kFarthest = 9e15; // whole seconds are exact up to here
    if (!(std::abs(since1970) < kFarthest))
        return std::nullopt;
    const double seconds = std::floor(since1970);
    const auto nanoseconds = static_cast<long>((since1970 - seconds) / kNanosecond);
    return timespec { static_cast<time_t>(seconds), std::min(nanoseconds, 999'999'999L) };
}

/// The id of a user or group; "leave it" when there is none.
std::uint32_t idIn(const NSDictionary& attributes, const NSStringConstant& key)
{
    const auto number = attributes.objectForKey<NSNumber>(key);
    return number ? number->unsignedIntValue() : static_cast<std::uint32_t>(-1);
}

}

NSRef<NSDictionary> attributesOf(const TreeSystem::Details& details)
{
    const auto volume = static_cast<std::uint32_t>(details.volume ^ details.volume >> 32);
    auto attributes = NSMutableDictionary::of({
        { NSFileType, typeOf(details.mode) },
        { NSFileSize, static_cast<unsigned long long>(details.size) },
        { NSFileModificationDate, dateOf(details.modified) },
        { NSFilePosixPermissions, static_cast<unsigned>(details.mode & 07777) },
        { NSFileReferenceCount, static_cast<unsigned long>(details.links) },
        { NSFileSystemNumber, volume },
        { NSFileSystemFileNumber, static_cast<unsigned long>(details.identity.inode) },
        { NSFileOwnerAccountID, details.owner },
        { NSFileGroupOwnerAccountID, details.group },
    });
    if (details.born)
        attributes->setObject(dateOf(*details.born), NSFileCreationDate);
    return attributes;
}

int applyAttributes(TreeSystem& system, const std::string& path, const NSDictionary& attributes)
{
    const std::uint32_t owner = idIn(attributes, NSFileOwnerAccountID);
    const std::uint32_t group = idIn(attributes, NSFileGroupOwnerAccountID);
    constexpr auto kLeave = static_cast<std::uint32_t>(-1);
    if (owner != kLeave || group != kLeave) {
        if (const int problem = system.setOwnerAt(path, owner, group); problem != 0)
            return problem;
    }
    if (const auto permissions = attributes.objectForKey<NSNumber>(NSFilePosixPermissions)) {
        const int problem = system.setPermissionsAt(path, permissions->unsignedIntValue() & 07777);
        if (problem != 0)
            return problem;
    }
    if (const auto date = attributes.objectForKey<NSDate>(NSFileModificationDate)) {
        const auto modified = timeOf(*date);
        return modified ? system.setModifiedAt(path, *modified) : -EINVAL;
    }
    TreeSystem::Status there; // even nothing is set on something
    return system.statusAt(path, there);
}

}
