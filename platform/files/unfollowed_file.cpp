#include "platform/files/unfollowed_file.h"

#include "LUMPlatform/NSError.h"
#include "platform/files/whole_file.h"
#include "platform/values/errno_status.h"

#include <cerrno>

namespace platform {

namespace {

Unfollowed outcome(int problem, NSRef<NSError>* error)
{
    if (problem == 0)
        return Unfollowed::Done;
    if (problem == -ELOOP)
        return Unfollowed::Link;
    fail(error, statusFromErrno(-problem));
    return Unfollowed::Failed;
}

}

Unfollowed readUnfollowed(
    const std::string& path, NSRef<NSData>& data, NSRef<NSError>* error, std::size_t largest)
{
    FileContent content;
    int problem = readFile(FileSystem::real(), path, content, { LastLink::Refused, largest });
    if (problem == 0) {
        const std::size_t length = content.length;
        data = NSData::dataWithBytesNoCopy(content.bytes.release(), length);
        problem = data ? 0 : -ENOMEM;
    }
    return outcome(problem, error);
}

Unfollowed replaceUnfollowed(const std::string& path, const NSData& data, NSRef<NSError>* error)
{
    return outcome(replaceFile(FileSystem::real(), path, data.bytes(), LastLink::Refused), error);
}

}
