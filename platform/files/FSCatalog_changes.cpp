#include "LUMPlatform/FSCatalog.h"

#include "platform/files/reference_opening.h"
#include "platform/files/reference_path.h"
#include "platform/files/rename_by_hand.h"
#include "platform/strings/utf_conversion.h"
#include "platform/values/errno_status.h"

#include <cerrno>
#include <optional>

namespace {

using platform::DescriptorPool;
using platform::kStatusNotFound;
using platform::NodeRef;
using platform::NodeSystem;
using platform::statusFromErrno;

constexpr OSStatus kStatusBadName = -37;

/// The bytes of a name that an object can have.
std::optional<std::string> systemName(std::u16string_view name)
{
    if (name.empty() || name == u"." || name == u".." || name.find(u'/') != name.npos
        || name.find(u'\0') != name.npos)
        return std::nullopt;
    return platform::utf8FromUtf16(name);
}

/// A folder that entries are changed in: a descriptor for the length of a scope.
class OpenFolder {
public:
    explicit OpenFolder(const std::string& path)
        : mFolder(DescriptorPool::shared().opened(
            [&] { return NodeSystem::current().openFolder(NodeSystem::kNoFolder, path.c_str()); }))
    {
        // A folder may be changed without the right to read it.
        if (mFolder == -EACCES)
            mFolder = DescriptorPool::shared().opened(
                [&] { return NodeSystem::current().open(NodeSystem::kNoFolder, path.c_str()); });
    }
    ~OpenFolder()
    {
        if (mFolder >= 0)
            NodeSystem::current().close(mFolder);
    }
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;

    int get() const { return mFolder; }

private:
    int mFolder;
};

/// Whether the entry is still the object; -ENOENT when another one has taken its place.
int checkEntry(int folder, const std::string& name, const platform::FileIdentity& identity)
{
    platform::FileAttributes attributes;
    const int problem = NodeSystem::current().attributes(folder, name.c_str(), attributes);
    if (problem != 0)
        return problem;
    return isSame(identity, attributes) ? 0 : -ENOENT;
}

OSStatus create(const FSRef& folder, std::u16string_view name, FSRef* made,
    int (NodeSystem::*call)(int folder, const char* name))
{
    if (!folder)
        return kStatusNotFound;
    const auto bytes = systemName(name);
    if (!bytes)
        return kStatusBadName;
    if (folder.node()->kind() != platform::FileKind::Folder)
        return statusFromErrno(ENOTDIR);
    std::string path;
    if (const int problem = platform::locate(*folder.node(), path); problem != 0)
        return statusFromErrno(-problem);
    const OpenFolder opened(path);
    if (opened.get() < 0)
        return statusFromErrno(-opened.get());
    if (const int problem = checkEntry(opened.get(), "", folder.node()->identity()); problem != 0)
        return statusFromErrno(-problem);
    const int problem = DescriptorPool::shared().opened(
        [&] { return (NodeSystem::current().*call)(opened.get(), bytes->c_str()); });
    if (problem != 0)
        return statusFromErrno(-problem);
    if (!made)
        return 0;
    NodeRef child;
    if (const int unseen = platform::openReferenceIn(opened.get(), path, *bytes, child); unseen != 0)
        return statusFromErrno(-unseen);
    *made = FSRef(std::move(child));
    return 0;
}

}

OSStatus FSRenameUnicode(const FSRef& ref, std::u16string_view name, FSRef* renamed)
{
    if (!ref)
        return kStatusNotFound;
    const auto bytes = systemName(name);
    if (!bytes)
        return kStatusBadName;
    std::string path;
    if (const int problem = platform::locate(*ref.node(), path); problem != 0)
        return statusFromErrno(-problem);
    if (path == "/")
        return statusFromErrno(EBUSY);
    const std::string folderPath = platform::folderOf(path);
    const std::string oldName(platform::nameOf(path));
    const OpenFolder folder(folderPath);
    if (folder.get() < 0)
        return statusFromErrno(-folder.get());
    if (const int problem = checkEntry(folder.get(), oldName, ref.node()->identity()); problem != 0)
        return statusFromErrno(-problem);
    if (*bytes != oldName) {
        int problem =
            NodeSystem::current().renameWithoutReplacing(folder.get(), oldName.c_str(), bytes->c_str());
        if (problem == -EINVAL || problem == -ENOSYS)
            problem = platform::renameByHand(
                platform::TreeSystem::real(), folder.get(), oldName, folder.get(), *bytes);
        if (problem != 0)
            return statusFromErrno(-problem);
        DescriptorPool::shared().setPath(*ref.node(), platform::joined(folderPath, *bytes));
    }
    if (renamed)
        *renamed = ref; // the same object, whose path is another
    return 0;
}

OSStatus FSCreateFileUnicode(const FSRef& folder, std::u16string_view name, FSRef* made)
{
    return create(folder, name, made, &NodeSystem::createFile);
}

OSStatus FSCreateDirectoryUnicode(const FSRef& folder, std::u16string_view name, FSRef* made)
{
    return create(folder, name, made, &NodeSystem::createFolder);
}
