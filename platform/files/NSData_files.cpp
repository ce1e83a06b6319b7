#include "LUMPlatform/NSData.h"

#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/whole_file.h"
#include "platform/values/errno_status.h"

#include <cerrno>
#include <optional>

namespace {

/// The bytes of a path for the system; nothing for null, an empty path, or one with a NUL inside.
std::optional<std::string> systemPath(const NSRef<NSString>& path)
{
    if (!path || path->length() == 0)
        return std::nullopt;
    std::string bytes = path->utf8();
    return bytes.find('\0') == std::string::npos ? std::optional(bytes) : std::nullopt;
}

}

NSRef<NSData> NSData::dataWithContentsOfFile(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    const auto bytes = systemPath(path);
    platform::FileContent content;
    int problem = bytes ? platform::readFile(platform::FileSystem::real(), *bytes, content) : -EINVAL;
    if (problem != 0) {
        platform::fail(error, platform::statusFromErrno(-problem));
        return nullptr;
    }
    const std::size_t length = content.length;
    return dataWithBytesNoCopy(content.bytes.release(), length);
}

bool NSData::writeToFile(const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error) const
{
    const auto to = systemPath(path);
    auto& files = platform::FileSystem::real();
    int problem = !to ? -EINVAL
        : atomically  ? platform::replaceFile(files, *to, bytes())
                      : platform::overwriteFile(files, *to, bytes());
    return problem == 0 || platform::fail(error, platform::statusFromErrno(-problem));
}
