#include "platform/files/rename_by_hand.h"

#include <cerrno>

namespace platform {

namespace {

int renameFolder(TreeSystem& system, int in, const std::string& name, int to, const std::string& newName)
{
    if (const int problem = system.makeFolder(to, newName); problem != 0)
        return problem;
    const int problem = system.rename(in, name, to, newName); // over the empty folder
    if (problem != 0)
        (void)system.removeFolder(to, newName);
    return problem;
}

int renameFile(TreeSystem& system, int in, const std::string& name, int to, const std::string& newName)
{
    const int linked = system.link(in, name, to, newName);
    if (linked == 0) {
        const int problem = system.removeFile(in, name);
        if (problem != 0)
            (void)system.removeFile(to, newName);
        return problem;
    }
    if (linked != -EPERM && linked != -EOPNOTSUPP)
        return linked;
    TreeSystem::Status there; // a file system without hard links leaves a gap here
    const int found = system.status(to, newName, there);
    return found == 0 ? -EEXIST : found == -ENOENT ? system.rename(in, name, to, newName) : found;
}

}

int renameByHand(TreeSystem& system, int in, const std::string& name, int to, const std::string& newName)
{
    TreeSystem::Status status;
    if (const int problem = system.status(in, name, status); problem != 0)
        return problem;
    return status.isFolder() ? renameFolder(system, in, name, to, newName)
                             : renameFile(system, in, name, to, newName);
}

}
