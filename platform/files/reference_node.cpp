#include "platform/files/reference_node.h"

#include "platform/files/descriptor_pool.h"

namespace platform {

ReferenceNode::ReferenceNode(const FileIdentity& identity, std::string_view path)
    : mHasHandle(static_cast<bool>(identity.handle)), mIdentity(identity), mPath(DescriptorPool::copied(path))
{
}

ReferenceNode::~ReferenceNode()
{
    DescriptorPool::shared().forget(*this);
}

bool ReferenceNode::isSameObject(const ReferenceNode& other) const
{
    if (mIdentity.inode != other.mIdentity.inode)
        return false;
    const bool haveHandles =
        mHasHandle.load(std::memory_order_acquire) && other.mHasHandle.load(std::memory_order_acquire);
    return haveHandles ? isSame(mIdentity, other.mIdentity) : isSame(identity(), other.identity());
}

FileIdentity ReferenceNode::identity() const
{
    if (mHasHandle.load(std::memory_order_acquire))
        return mIdentity;
    FileIdentity identity;
    identity.volume = mIdentity.volume;
    identity.device = mIdentity.device;
    identity.inode = mIdentity.inode;
    identity.born = mIdentity.born;
    identity.kind = mIdentity.kind;
    identity.isLayered = mIdentity.isLayered;
    return identity;
}

}
