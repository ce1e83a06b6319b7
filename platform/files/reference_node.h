#pragma once

#include "platform/files/file_identity.h"

#include <atomic>
#include <memory>
#include <string_view>
#include <utility>

namespace platform {

class DescriptorPool;

/// What copies of a file reference share: which object it is, for good, and what is known of where it is.
///
/// Two nodes of one object are not the same: each remembers the name it came by, which hard links differ in.
/// Threads: any.
class ReferenceNode {
public:
    ReferenceNode(const FileIdentity& identity, std::string_view path);
    ReferenceNode(const ReferenceNode&) = delete;
    ReferenceNode& operator=(const ReferenceNode&) = delete;

    void retain() noexcept { mCount.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept
    {
        if (mCount.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

    FileIdentity identity() const;
    bool isSameObject(const ReferenceNode& other) const;
    std::uint64_t inode() const { return mIdentity.inode; }
    std::uint64_t volume() const { return mIdentity.volume; }
    FileKind kind() const { return mIdentity.kind; }

private:
    friend class DescriptorPool;

    ~ReferenceNode();

    std::atomic<std::uint32_t> mCount { 1 };
    std::atomic<bool> mHasHandle;
    FileIdentity mIdentity; // the handle is written once, before mHasHandle is set

    // The pool's, under its lock.
    int mDescriptor = -1;
    std::uint32_t mPins = 0;
    ReferenceNode* mNewer = nullptr;
    ReferenceNode* mOlder = nullptr;
    std::unique_ptr<char[]> mPath;
    std::int64_t mMissedAt = 0;
    std::int64_t mMissedChange = 0;
};

/// Shares a node; may be null.
class NodeRef {
public:
    NodeRef() = default;
    /// Takes over the count of a new node.
    explicit NodeRef(ReferenceNode* made) : mNode(made) { }
    NodeRef(const NodeRef& other) : mNode(other.mNode)
    {
        if (mNode)
            mNode->retain();
    }
    NodeRef(NodeRef&& other) noexcept : mNode(other.leak()) { }
    NodeRef& operator=(NodeRef other) noexcept
    {
        std::swap(mNode, other.mNode);
        return *this;
    }
    ~NodeRef()
    {
        if (mNode)
            mNode->release();
    }

    ReferenceNode* get() const { return mNode; }
    ReferenceNode* operator->() const { return mNode; }
    ReferenceNode& operator*() const { return *mNode; }
    explicit operator bool() const { return mNode != nullptr; }
    [[nodiscard]] ReferenceNode* leak() noexcept { return std::exchange(mNode, nullptr); }

private:
    ReferenceNode* mNode = nullptr;
};

}
