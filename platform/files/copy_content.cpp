#include "platform/files/copy_content.h"

#include "platform/files/write_all.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <memory>
#include <sys/stat.h>

namespace platform {

namespace {

constexpr std::size_t kRange = std::size_t { 64 } << 20;
constexpr std::size_t kBlock = std::size_t { 128 } << 10;

int copyByBlocks(TreeSystem& system, int from, int to, std::uint64_t length)
{
    const auto block = std::make_unique<std::byte[]>(kBlock);
    while (length > 0) {
        const std::size_t wanted = std::min<std::uint64_t>(kBlock, length);
        const ssize_t count = system.read(from, { block.get(), wanted });
        if (count <= 0)
            return static_cast<int>(count);
        if (const int problem = writeAll(system, to, { block.get(), static_cast<std::size_t>(count) });
            problem != 0)
            return problem;
        length -= static_cast<std::uint64_t>(count);
    }
    return 0;
}

/// What copyRange says where it cannot work, rather than that something is wrong.
bool isRefusal(ssize_t result)
{
    return result == -EXDEV || result == -EINVAL || result == -ENOSYS || result == -EOPNOTSUPP
        || result == -EPERM || result == -EBADF || result == -ETXTBSY;
}

/// From where both files stand.
int copySpan(TreeSystem& system, int from, int to, std::uint64_t length)
{
    while (length > 0) {
        const ssize_t count = system.copyRange(from, to, std::min<std::uint64_t>(kRange, length));
        if (isRefusal(count))
            return copyByBlocks(system, from, to, length);
        if (count <= 0)
            return static_cast<int>(count);
        length -= static_cast<std::uint64_t>(count);
    }
    return 0;
}

/// Leaves out what was never written, where the system can tell.
int copyWithHoles(TreeSystem& system, int from, int to, std::uint64_t length)
{
    for (std::int64_t at = 0; at < static_cast<std::int64_t>(length);) {
        const std::int64_t data = system.nextData(from, at);
        if (data == -ENXIO)
            break; // nothing but a hole is left
        if (data == -EINVAL && at == 0)
            return copySpan(system, from, to, length);
        const std::int64_t hole = data < 0 ? data : system.nextHole(from, data);
        if (hole < 0)
            return static_cast<int>(hole);
        int problem = system.moveTo(from, data);
        if (problem == 0)
            problem = system.moveTo(to, data);
        if (problem == 0)
            problem = copySpan(system, from, to, static_cast<std::uint64_t>(hole - data));
        if (problem != 0)
            return problem;
        at = hole;
    }
    return system.setSize(to, length);
}

/// Nothing of the user's own is left out but where the file system can hold none of it.
bool canBeLeftOut(int result, const std::string& name)
{
    const bool isSystems = !name.starts_with("user.");
    return result == -EOPNOTSUPP || result == -ENODATA // gone meanwhile
        || (isSystems && (result == -EPERM || result == -EACCES || result == -EINVAL));
}

int copyExtended(TreeSystem& system, int from, int to)
{
    std::vector<std::string> names;
    const int listed = system.extendedNames(from, names);
    if (listed != 0)
        return listed == -EOPNOTSUPP ? 0 : listed;
    for (const std::string& name : names) {
        std::vector<std::byte> value;
        int problem = system.extended(from, name, value);
        if (problem == 0)
            problem = system.setExtended(to, name, value);
        if (problem != 0 && !canBeLeftOut(problem, name))
            return problem;
    }
    return 0;
}

}

int copyContent(TreeSystem& system, int from, const TreeSystem::Status& status, int to)
{
    if (status.size == 0) // as also files have that the system makes up on reading
        return copyByBlocks(system, from, to, std::numeric_limits<std::uint64_t>::max());
    return status.allocated < status.size ? copyWithHoles(system, from, to, status.size)
                                          : copySpan(system, from, to, status.size);
}

int copyAttributes(TreeSystem& system, int from, const TreeSystem::Status& status, int to)
{
    // Extended attributes while the copier may still write; then the owner, which drops permissions; times
    // last, which everything else changes.
    if (const int problem = copyExtended(system, from, to); problem != 0)
        return problem;
    TreeSystem::Status made;
    if (const int problem = system.status(to, made); problem != 0)
        return problem;
    mode_t permissions = status.mode & 07777;
    if (made.owner != status.owner || made.group != status.group) {
        const int problem = system.setOwner(to, status.owner, status.group);
        if (problem == -EPERM || problem == -EINVAL)
            permissions &= 01777;
        else if (problem != 0)
            return problem;
    }
    if (const int problem = system.setPermissions(to, permissions); problem != 0)
        return problem;
    return system.setTimes(to, status.accessed, status.modified);
}

}
