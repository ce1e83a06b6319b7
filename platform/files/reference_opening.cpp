#include "platform/files/reference_opening.h"

#include "platform/files/descriptor_pool.h"

#include <filesystem>

namespace platform {

namespace {

/// Whether the text can be the real path of something: absolute, and nothing in it that a real one lacks.
bool canBeReal(std::string_view path)
{
    if (!path.starts_with('/') || (path.size() > 1 && path.ends_with('/')))
        return false;
    for (std::size_t slash = 0; slash != std::string_view::npos; slash = path.find('/', slash + 1)) {
        const std::string_view rest = path.substr(slash + 1);
        const std::string_view name = rest.substr(0, rest.find('/'));
        if ((name.empty() && path.size() > 1) || name == "." || name == "..")
            return false;
    }
    return true;
}

int identifyWithoutDescriptor(const char* path, FileIdentity& identity)
{
    auto& system = NodeSystem::current();
    FileAttributes attributes;
    if (const int problem = system.attributes(NodeSystem::kNoFolder, path, attributes); problem != 0)
        return problem;
    FileHandle handle;
    (void)system.handle(NodeSystem::kNoFolder, path, NodeSystem::HandlePurpose::Telling, handle);
    NodeSystem::Volume volume;
    const std::string lookedAt = attributes.kind == FileKind::Link ? folderOf(path) : path;
    if (const int problem = system.volumeAt(lookedAt.c_str(), volume); problem != 0)
        return problem;
    identity = FileIdentity(volume, attributes, handle);
    return 0;
}

std::string absolutePath(const std::string& path)
{
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.string();
}

int referenceWithoutDescriptor(const std::string& path, NodeRef& made)
{
    const std::string absolute = absolutePath(path);
    FileIdentity identity;
    if (const int problem = identifyWithoutDescriptor(absolute.c_str(), identity); problem != 0)
        return problem;
    made = NodeRef(new ReferenceNode(identity, absolute));
    return 0;
}

/// Takes the descriptor over. `path` is the real one, or how the object was found when `isReal` is false.
int referenceTo(int descriptor, const std::string& path, bool isReal, NodeRef& made)
{
    auto& system = NodeSystem::current();
    FileIdentity identity;
    if (const int problem = identify(descriptor, identity); problem != 0) {
        system.close(descriptor);
        return problem;
    }
    std::string told;
    if (!isReal && system.pathOf(descriptor, told) != 0)
        told = absolutePath(path);
    const std::string& known = isReal ? path : told;
    made = NodeRef(new ReferenceNode(identity, known));
    (void)DescriptorPool::shared().adopt(*made, descriptor, known, identity.handle);
    return 0;
}

}

bool isOutOfDescriptors(int result)
{
    return result == -EMFILE || result == -ENFILE;
}

bool isUntold(int result)
{
    return result == -ELOOP || result == -ENOSYS || result == -EPERM;
}

int identify(int descriptor, FileIdentity& identity)
{
    auto& system = NodeSystem::current();
    FileAttributes attributes;
    if (const int problem = system.attributes(descriptor, "", attributes); problem != 0)
        return problem;
    NodeSystem::Volume volume;
    if (const int problem = system.volume(descriptor, volume); problem != 0)
        return problem;
    FileHandle handle;
    (void)system.handle(descriptor, "", NodeSystem::HandlePurpose::Telling, handle);
    identity = FileIdentity(volume, attributes, handle);
    return 0;
}

int openReference(const std::string& path, NodeRef& made)
{
    auto& system = NodeSystem::current();
    auto& pool = DescriptorPool::shared();
    int descriptor = canBeReal(path) ? pool.opened([&] { return system.openReal(path.c_str()); }) : -ELOOP;
    const bool isReal = !isUntold(descriptor);
    if (!isReal)
        descriptor = pool.opened([&] { return system.open(NodeSystem::kNoFolder, path.c_str()); });
    if (isOutOfDescriptors(descriptor))
        return referenceWithoutDescriptor(path, made);
    return descriptor < 0 ? descriptor : referenceTo(descriptor, path, isReal, made);
}

int openReferenceIn(int folder, const std::string& folderPath, const std::string& name, NodeRef& made)
{
    auto& system = NodeSystem::current();
    const std::string path = joined(folderPath, name);
    const int descriptor = DescriptorPool::shared().opened([&] { return system.open(folder, name.c_str()); });
    if (descriptor >= 0 && referenceTo(descriptor, path, false, made) == 0)
        return 0;
    FileAttributes attributes;
    NodeSystem::Volume volume;
    FileHandle handle;
    if (const int problem = system.attributes(folder, name.c_str(), attributes); problem != 0)
        return problem;
    if (const int problem = system.volume(folder, volume); problem != 0)
        return problem;
    (void)system.handle(folder, name.c_str(), NodeSystem::HandlePurpose::Telling, handle);
    made = NodeRef(new ReferenceNode(FileIdentity(volume, attributes, handle), path));
    return 0;
}

int openReferenceTarget(const std::string& path, NodeRef& made)
{
    auto& system = NodeSystem::current();
    const int descriptor = DescriptorPool::shared().opened([&] { return system.openTarget(path.c_str()); });
    if (!isOutOfDescriptors(descriptor))
        return descriptor < 0 ? descriptor : referenceTo(descriptor, path, false, made);
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);
    return error ? -error.value() : referenceWithoutDescriptor(target.string(), made);
}

std::string withoutLinks(const std::string& path)
{
    std::error_code error;
    const auto folder = std::filesystem::canonical(folderOf(path), error);
    return error ? path : joined(folder.string(), nameOf(path));
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string_view nameOf(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string joined(const std::string& folder, std::string_view name)
{
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path = folder;
    if (!path.ends_with('/'))
        path += '/';
    return path.append(name);
}

}
