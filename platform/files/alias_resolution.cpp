#include "platform/files/alias_resolution.h"

#include "platform/files/object_search.h"
#include "platform/files/open_file.h"
#include "platform/files/reference_opening.h"
#include "platform/files/reference_path.h"

#include <optional>

namespace platform {

namespace {

using Purpose = NodeSystem::HandlePurpose;

/// Whether what is at `path` is the object of the record.
///
/// Some volumes get another number each time they are mounted; then handle, which holds a generation, and
/// time of birth, to the nanosecond, are proof. Others have neither, and give inode numbers out anew each
/// time; there content of that size and age must be behind the number.
bool isRecorded(const AliasRecord& record, const std::string& path, const FileIdentity& there)
{
    FileIdentity recorded = record.identity;
    const bool isBornKnown =
        recorded.born != FileAttributes::kUnknownTime && there.born != FileAttributes::kUnknownTime;
    const bool isHandleKnown = recorded.handle && there.handle;
    if (isBornKnown && isHandleKnown)
        recorded.volume = there.volume;
    if (!isSame(recorded, there))
        return false;
    if (isBornKnown || isHandleKnown)
        return true;
    FileAttributes attributes;
    return NodeSystem::current().attributes(NodeSystem::kNoFolder, path.c_str(), attributes) == 0
        && attributes.size == record.size && attributes.modified == record.modified;
}

/// A folder to read on the volume of the record: the nearest that is left of those above the object.
std::optional<int> openNearestFolder(const AliasRecord& record, NodeSystem::Volume& volume)
{
    auto& system = NodeSystem::current();
    std::string path = record.path;
    while (path != "/") {
        path = folderOf(path);
        const int folder = DescriptorPool::shared().opened(
            [&] { return system.openFolder(NodeSystem::kNoFolder, path.c_str()); });
        if (folder < 0)
            continue;
        if (system.volume(folder, volume) == 0 && volume.type == record.volumeType)
            return folder;
        system.close(folder);
        break;
    }
    return std::nullopt;
}

class Resolution {
public:
    Resolution(const AliasRecord& record, AliasTarget target) : mRecord(record), mTarget(target) { }

    int run(NodeRef& found)
    {
        NodeRef there;
        const int problem = openReference(mRecord.path, there);
        if (problem == 0 && isRecorded(mRecord, mRecord.path, there->identity())) {
            found = std::move(there);
            return 0;
        }
        NodeSystem::Volume volume;
        if (const auto folder = openNearestFolder(mRecord, volume)) {
            OpenFile closing(mSystem, *folder);
            mSought = mRecord.identity;
            mSought.isLayered = volume.isLayered;
            if (mSought.handle && mSought.born != FileAttributes::kUnknownTime)
                mSought.volume = volume.id;
            const bool isFound = findByHandle(*folder, found) || findInOldFolder(*folder, found);
            (void)closing.close();
            if (isFound || findBySearch(mRecord.path, mRecord.ancestors, kSearch, found))
                return 0;
        }
        if (mTarget == AliasTarget::Replacement && problem == 0 && there->kind() == mRecord.identity.kind) {
            found = std::move(there); // a program saved to a new file, and put it in place of the old
            return 0;
        }
        // A file, or a loop of links, where a folder was is as good as nothing.
        const bool isNothing = problem == 0 || problem == -ENOTDIR || problem == -ELOOP;
        return isNothing ? -ENOENT : problem;
    }

private:
    bool isFoundAt(const std::string& path, NodeRef& found) const
    {
        NodeRef there;
        if (openReference(path, there) != 0 || !isRecorded(mRecord, path, there->identity()))
            return false;
        found = std::move(there);
        return true;
    }
    /// Where the system finds the object of a handle; empty when it does not, or does not know the path.
    std::string pathByHandle(int mount, const FileHandle& handle) const
    {
        std::string path;
        if (!handle)
            return path;
        const int descriptor =
            DescriptorPool::shared().opened([&] { return mSystem.openByHandle(mount, handle); });
        if (descriptor < 0)
            return path;
        if (mSystem.pathOf(descriptor, path) != 0)
            path.clear();
        mSystem.close(descriptor);
        return path;
    }
    bool findByHandle(int mount, NodeRef& found) const
    {
        const std::string path = pathByHandle(mount, mRecord.finding);
        return !path.empty() && isFoundAt(path, found);
    }
    bool findInOldFolder(int mount, NodeRef& found) const
    {
        const std::string folder = pathByHandle(mount, mRecord.folder);
        return !folder.empty() && findBySearch(joined(folder, nameOf(mRecord.path)), {}, kGlance, found);
    }
    bool findBySearch(const std::string& lastPath, std::span<const std::uint64_t> ancestors,
        SearchLimits limits, NodeRef& found) const
    {
        std::string path;
        return searchObject(mSought, lastPath, ancestors, limits, path) == 0 && isFoundAt(path, found);
    }

    NodeSystem& mSystem = NodeSystem::current();
    const AliasRecord& mRecord;
    const AliasTarget mTarget;
    FileIdentity mSought;
};

void describeAncestors(AliasRecord& record)
{
    for (std::string path = record.path; path != "/";) {
        path = folderOf(path);
        FileAttributes attributes;
        if (NodeSystem::current().attributes(NodeSystem::kNoFolder, path.c_str(), attributes) != 0)
            break;
        record.ancestors.push_back(attributes.inode);
    }
}

}

int describeAlias(ReferenceNode& node, AliasRecord& record)
{
    auto& system = NodeSystem::current();
    LocatedNode located;
    if (const int problem = locate(node, located); problem != 0)
        return problem;
    const int object = located.lease ? located.lease.get() : NodeSystem::kNoFolder;
    const char* const name = located.lease ? "" : located.path.c_str();
    FileAttributes attributes;
    if (const int problem = system.attributes(object, name, attributes); problem != 0)
        return problem;
    NodeSystem::Volume volume;
    const std::string folder = folderOf(located.path);
    const int problem =
        located.lease ? system.volume(object, volume) : system.volumeAt(folder.c_str(), volume);
    if (problem != 0)
        return problem;
    record.identity = node.identity();
    record.identity.device = 0;
    record.volumeType = volume.type;
    record.size = attributes.size;
    record.modified = attributes.modified;
    (void)system.handle(object, name, Purpose::Finding, record.finding);
    (void)system.handle(NodeSystem::kNoFolder, folder.c_str(), Purpose::Finding, record.folder);
    record.path = std::move(located.path);
    describeAncestors(record);
    return 0;
}

int resolveAlias(const AliasRecord& record, AliasTarget target, NodeRef& found)
{
    return Resolution(record, target).run(found);
}

}
