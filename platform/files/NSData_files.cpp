#include "LUMPlatform/NSData.h"

#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/system_path.h"
#include "platform/files/whole_file.h"
#include "platform/values/errno_status.h"

#include <cerrno>

NSRef<NSData> NSData::dataWithContentsOfFile(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    const std::string from = platform::systemPath(path);
    platform::FileContent content;
    int problem = from.empty() ? -EINVAL : platform::readFile(platform::FileSystem::real(), from, content);
    if (problem != 0) {
        platform::fail(error, platform::statusFromErrno(-problem));
        return nullptr;
    }
    const std::size_t length = content.length;
    return dataWithBytesNoCopy(content.bytes.release(), length);
}

bool NSData::writeToFile(const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error) const
{
    const std::string to = platform::systemPath(path);
    auto& files = platform::FileSystem::real();
    int problem = to.empty() ? -EINVAL
        : atomically         ? platform::replaceFile(files, to, bytes())
                             : platform::overwriteFile(files, to, bytes());
    return problem == 0 || platform::fail(error, platform::statusFromErrno(-problem));
}
