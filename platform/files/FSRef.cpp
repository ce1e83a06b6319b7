#include "LUMPlatform/FSRef.h"

#include "platform/files/reference_opening.h"
#include "platform/files/reference_path.h"
#include "platform/values/errno_status.h"

#include <tuple>

namespace {

using platform::kStatusNotFound;
using platform::NodeRef;
using platform::statusFromErrno;

constexpr OSStatus kStatusOtherVolume = -1303;
constexpr OSStatus kStatusOtherObject = -1420;

/// What the link of that path says, one step on.
int openLinkTarget(const platform::LocatedNode& link, NodeRef& target)
{
    auto& system = platform::NodeSystem::current();
    std::string text;
    const int problem = link.lease ? system.readLink(link.lease.get(), text) : -EMFILE;
    if (problem != 0)
        return problem;
    return openReference(
        text.starts_with('/') ? text : platform::joined(platform::folderOf(link.path), text), target);
}

}

FSRef::FSRef(platform::NodeRef node) : mNode(node.leak()) { }

void FSRef::retain() const noexcept
{
    if (mNode)
        mNode->retain();
}

void FSRef::release() const noexcept
{
    mNode->release();
}

OSStatus FSPathMakeRef(const std::string& path, FSRef& ref)
{
    if (path.find('\0') != std::string::npos)
        return kStatusNotFound;
    const std::size_t end = path.find_last_not_of('/');
    NodeRef made;
    const int problem = end != std::string::npos && end + 1 < path.size()
        ? platform::openReference(path.substr(0, end + 1), made)
        : platform::openReference(end == std::string::npos && !path.empty() ? "/" : path, made);
    if (problem != 0)
        return statusFromErrno(-problem);
    ref = FSRef(std::move(made));
    return 0;
}

OSStatus FSRefMakePath(const FSRef& ref, std::string& path)
{
    return ref ? statusFromErrno(-platform::locate(*ref.node(), path)) : kStatusNotFound;
}

OSStatus FSCompareFSRefs(const FSRef& a, const FSRef& b)
{
    if (a.node() == b.node())
        return 0;
    if (!a || !b)
        return kStatusOtherObject;
    if (a.node()->isSameObject(*b.node()))
        return 0;
    return a.node()->volume() == b.node()->volume() ? kStatusOtherObject : kStatusOtherVolume;
}

int FSOrderFSRefs(const FSRef& a, const FSRef& b)
{
    if (FSCompareFSRefs(a, b) == 0)
        return 0;
    if (!a || !b)
        return a ? 1 : -1;
    const auto key = [](const FSRef& ref) {
        const platform::FileIdentity identity = ref.node()->identity();
        return std::tuple(identity.volume, identity.inode, identity.born, ref.node());
    };
    return key(a) < key(b) ? -1 : 1;
}

OSStatus FSResolveAliasFile(FSRef& ref, bool resolveChain, bool* targetIsFolder, bool* wasAliased)
{
    if (!ref)
        return kStatusNotFound;
    const bool isLink = ref.node()->kind() == platform::FileKind::Link;
    if (isLink) {
        platform::LocatedNode link;
        NodeRef target;
        int problem = platform::locate(*ref.node(), link);
        if (problem == 0)
            problem = resolveChain ? platform::openReferenceTarget(link.path, target)
                                   : openLinkTarget(link, target);
        if (problem != 0)
            return statusFromErrno(-problem);
        link = {}; // which must not outlive its node
        ref = FSRef(std::move(target));
    }
    if (targetIsFolder)
        *targetIsFolder = ref.node()->kind() == platform::FileKind::Folder;
    if (wasAliased)
        *wasAliased = isLink;
    return 0;
}

void FSReleaseDescriptors()
{
    platform::DescriptorPool::shared().releaseAll();
}
