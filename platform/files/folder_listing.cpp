#include "platform/files/folder_listing.h"

#include "platform/files/reference_opening.h"
#include "platform/files/reference_path.h"
#include "platform/strings/utf_conversion.h"

#include <algorithm>

namespace platform {

namespace {

bool isUtf8(std::string_view name)
{
    char16_t units[256]; // names have 255 bytes at most
    return name.size() < std::size(units) && convertUtf8(name, units);
}

}

int FolderListing::open(ReferenceNode& folder, std::unique_ptr<FolderListing>& opened)
{
    if (folder.kind() != FileKind::Folder)
        return -ENOTDIR;
    LocatedNode located;
    if (const int problem = locate(folder, located); problem != 0)
        return problem;
    auto& system = NodeSystem::current();
    const int descriptor = DescriptorPool::shared().opened([&] {
        return located.lease ? system.openFolder(located.lease.get(), "")
                             : system.openFolder(NodeSystem::kNoFolder, located.path.c_str());
    });
    if (descriptor < 0)
        return descriptor;
    std::unique_ptr<FolderListing> listing(new FolderListing(descriptor, std::move(located.path)));
    if (const int problem = listing->begin(); problem != 0)
        return problem;
    opened = std::move(listing);
    return 0;
}

FolderListing::FolderListing(int folder, std::string path) : mReader(mSystem, folder), mPath(std::move(path))
{
}

int FolderListing::begin()
{
    FileAttributes attributes;
    NodeSystem::Volume volume;
    if (const int problem = mSystem.attributes(mReader.folder(), "", attributes); problem != 0)
        return problem;
    if (const int problem = mSystem.volume(mReader.folder(), volume); problem != 0)
        return problem;
    mPlaces.push_back({ attributes.mount, attributes.device, volume });
    return 0;
}

int FolderListing::next(NodeRef& made, std::string_view& name)
{
    FolderEntry entry;
    int result = 0;
    while ((result = mReader.next(entry)) > 0) {
        if (!isUtf8(entry.name))
            continue;
        FileIdentity identity;
        const int problem = identify(entry.name.data(), identity);
        if (problem == 0) {
            made = NodeRef(new ReferenceNode(identity, joined(mPath, entry.name)));
            name = entry.name;
            return 1;
        }
        if (problem != -ENOENT && mProblem == 0) // it did not just go away meanwhile
            mProblem = problem;
    }
    return result < 0 ? result : mProblem;
}

int FolderListing::identify(const char* name, FileIdentity& identity)
{
    FileAttributes attributes;
    NodeSystem::Volume volume;
    FileHandle handle;
    if (const int problem = mSystem.attributes(mReader.folder(), name, attributes); problem != 0)
        return problem;
    if (const int problem = volumeOf(name, attributes, volume); problem != 0)
        return problem;
    // Elsewhere it waits until the entry is used; here it is all that stays if somebody writes before that.
    if (volume.isLayered)
        (void)mSystem.handle(mReader.folder(), name, NodeSystem::HandlePurpose::Telling, handle);
    identity = FileIdentity(volume, attributes, handle);
    return 0;
}

/// Entries of a folder are on its volume, except where another one is mounted or begins without a mount. A
/// device number of its own says nothing: layered file systems give files another one than their folder.
int FolderListing::volumeOf(const char* name, const FileAttributes& attributes, NodeSystem::Volume& volume)
{
    const auto known = std::ranges::find_if(mPlaces, [&](const Place& place) {
        return place.mount == attributes.mount && place.device == attributes.device;
    });
    if (known != mPlaces.end()) {
        volume = known->volume;
        return 0;
    }
    const int descriptor =
        DescriptorPool::shared().opened([&] { return mSystem.open(mReader.folder(), name); });
    if (descriptor < 0)
        return descriptor;
    NodeSystem::Volume found;
    const int problem = mSystem.volume(descriptor, found);
    mSystem.close(descriptor);
    if (problem != 0)
        return problem;
    mPlaces.push_back({ attributes.mount, attributes.device, found });
    volume = found;
    return 0;
}

}
