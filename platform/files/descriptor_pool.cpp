#include "platform/files/descriptor_pool.h"

#include <algorithm>
#include <cstring>
#include <pthread.h>

namespace platform {

namespace {

constexpr std::int64_t kMissLasts = 1'000'000'000; // nanoseconds

/// Volumes that users take away: an open object on them would keep them from being unmounted.
bool isOnRemovableVolume(std::string_view path)
{
    constexpr std::string_view kBelow[] = { "/media/", "/run/media/", "/mnt/" };
    return std::ranges::any_of(kBelow, [&](std::string_view folder) { return path.starts_with(folder); });
}

}

DescriptorPool& DescriptorPool::shared()
{
    static DescriptorPool& only = [&]() -> DescriptorPool& {
        auto* made = new DescriptorPool; // never destroyed: references may end after everything
        // A child must not find the lock held by a thread that it has not got. It is taken in one call and
        // given back in another, which the analysis of locks does not follow.
        pthread_atfork([]() NS_NO_THREAD_SAFETY_ANALYSIS { shared().mLock.lock(); },
            []() NS_NO_THREAD_SAFETY_ANALYSIS { shared().mLock.unlock(); },
            []() NS_NO_THREAD_SAFETY_ANALYSIS { shared().mLock.unlock(); });
        return *made;
    }();
    return only;
}

DescriptorPool::DescriptorPool() : mBudget(budgetOfProcess()) { }

std::size_t DescriptorPool::budgetOfProcess()
{
    return std::clamp(NodeSystem::current().descriptorLimit() / 4, kLeast, kMost);
}

DescriptorPool::Lease::~Lease()
{
    if (mNode)
        shared().unpin(*mNode);
    else if (mDescriptor >= 0)
        NodeSystem::current().close(mDescriptor);
}

DescriptorPool::Lease DescriptorPool::lease(ReferenceNode& node)
{
    MutexLock held(mLock);
    if (node.mDescriptor < 0)
        return {};
    ++node.mPins;
    use(node);
    return { &node, node.mDescriptor };
}

DescriptorPool::Lease DescriptorPool::adopt(
    ReferenceNode& node, int descriptor, std::string_view path, const FileHandle& handle)
{
    std::vector<int> closing;
    Lease lease;
    {
        MutexLock held(mLock);
        if (handle && !node.mHasHandle.load(std::memory_order_relaxed)) {
            node.mIdentity.handle = handle;
            node.mHasHandle.store(true, std::memory_order_release);
        }
        if (!node.mPath || path != node.mPath.get())
            replacePath(node, path);
        node.mMissedAt = 0;
        if (isOnRemovableVolume(path)) {
            lease = { nullptr, descriptor };
        } else if (node.mDescriptor >= 0) {
            closing.push_back(descriptor); // another thread was faster
            ++node.mPins;
            lease = { &node, node.mDescriptor };
        } else {
            node.mDescriptor = descriptor;
            ++node.mPins;
            ++mHeld;
            linkAsNewest(node);
            lease = { &node, descriptor };
            if (mHeld > mBudget)
                closing = evictBeyond(mBudget);
        }
    }
    closeAll(closing);
    return lease;
}

void DescriptorPool::disown(ReferenceNode& node, int descriptor)
{
    MutexLock held(mLock);
    if (node.mDescriptor != descriptor)
        return;
    unlink(node);
    node.mDescriptor = -1;
    --mHeld;
}

void DescriptorPool::setGone(ReferenceNode& node)
{
    int closing = -1;
    {
        MutexLock held(mLock);
        node.mPath = nullptr;
        if (node.mDescriptor >= 0 && node.mPins == 0) {
            closing = std::exchange(node.mDescriptor, -1);
            unlink(node);
            --mHeld;
        }
    }
    if (closing >= 0)
        NodeSystem::current().close(closing);
}

std::string DescriptorPool::path(ReferenceNode& node)
{
    MutexLock held(mLock);
    return node.mPath ? node.mPath.get() : std::string();
}

void DescriptorPool::setPath(ReferenceNode& node, std::string_view path)
{
    MutexLock held(mLock);
    replacePath(node, path);
    node.mMissedAt = 0;
}

std::vector<std::string> DescriptorPool::guesses(std::string_view path)
{
    MutexLock held(mLock);
    return mMoves.guesses(path);
}

std::shared_ptr<const MissedSearch> DescriptorPool::lastMiss()
{
    MutexLock held(mLock);
    return mLastMiss;
}

void DescriptorPool::setLastMiss(std::shared_ptr<const MissedSearch> miss)
{
    MutexLock held(mLock);
    mLastMiss.swap(miss); // the one before ends outside the lock
}

bool DescriptorPool::hasMissed(const ReferenceNode& node, std::int64_t folderModified, std::int64_t now)
{
    MutexLock held(mLock);
    return node.mMissedAt != 0 && now - node.mMissedAt < kMissLasts && node.mMissedChange == folderModified;
}

void DescriptorPool::setMissed(ReferenceNode& node, std::int64_t folderModified, std::int64_t now)
{
    MutexLock held(mLock);
    node.mMissedAt = now;
    node.mMissedChange = folderModified;
}

bool DescriptorPool::makeRoom()
{
    std::vector<int> closing;
    {
        MutexLock held(mLock);
        mBudget = std::max(kLeast, std::min(mBudget, mHeld) / 2);
        closing = evictBeyond(mHeld > mBudget ? mBudget : 0);
    }
    closeAll(closing);
    return !closing.empty();
}

void DescriptorPool::releaseAll()
{
    std::vector<int> closing;
    {
        MutexLock held(mLock);
        closing = evictBeyond(0);
        mBudget = budgetOfProcess();
        mLastMiss = nullptr;
    }
    closeAll(closing);
}

std::size_t DescriptorPool::budget()
{
    MutexLock held(mLock);
    return mBudget;
}

std::size_t DescriptorPool::held()
{
    MutexLock held(mLock);
    return mHeld;
}

std::unique_ptr<char[]> DescriptorPool::copied(std::string_view path)
{
    auto copy = std::make_unique_for_overwrite<char[]>(path.size() + 1);
    *std::ranges::copy(path, copy.get()).out = 0;
    return copy;
}

void DescriptorPool::closeAll(const std::vector<int>& descriptors)
{
    for (const int descriptor : descriptors)
        NodeSystem::current().close(descriptor);
}

bool DescriptorPool::isStillOurs(
    const ReferenceNode& node, int descriptor, int& problem, FileAttributes& attributes)
{
    auto& system = NodeSystem::current();
    problem = system.attributes(descriptor, "", attributes);
    if (problem != 0)
        return problem != -EBADF;
    const FileIdentity identity = node.identity();
    if (!isSame(identity, attributes))
        return false;
    if (!identity.handle || (!identity.isLayered && attributes.born != FileAttributes::kUnknownTime))
        return true;
    // The number alone has been compared, and may have gone to another object since.
    FileHandle handle;
    return system.handle(descriptor, "", NodeSystem::HandlePurpose::Telling, handle) != 0
        || handle == identity.handle;
}

void DescriptorPool::forget(ReferenceNode& node)
{
    {
        MutexLock held(mLock);
        if (node.mDescriptor < 0)
            return;
        unlink(node);
        --mHeld;
    }
    FileAttributes attributes;
    int problem = 0;
    if (isStillOurs(node, node.mDescriptor, problem, attributes))
        NodeSystem::current().close(node.mDescriptor);
}

void DescriptorPool::unpin(ReferenceNode& node)
{
    MutexLock held(mLock);
    --node.mPins;
}

void DescriptorPool::use(ReferenceNode& node)
{
    if (&node == mNewest)
        return;
    unlink(node);
    linkAsNewest(node);
}

void DescriptorPool::linkAsNewest(ReferenceNode& node)
{
    node.mOlder = mNewest;
    node.mNewer = nullptr;
    (mNewest ? mNewest->mNewer : mOldest) = &node;
    mNewest = &node;
}

void DescriptorPool::unlink(ReferenceNode& node)
{
    (node.mNewer ? node.mNewer->mOlder : mNewest) = node.mOlder;
    (node.mOlder ? node.mOlder->mNewer : mOldest) = node.mNewer;
}

std::vector<int> DescriptorPool::evictBeyond(std::size_t count)
{
    std::vector<int> closing;
    for (ReferenceNode* node = mOldest; node && mHeld > count;) {
        ReferenceNode& last = *node;
        node = node->mNewer;
        if (last.mPins > 0)
            continue;
        FileAttributes attributes;
        int problem = 0;
        if (isStillOurs(last, last.mDescriptor, problem, attributes)) {
            if (problem == 0)
                remember(last, attributes);
            closing.push_back(last.mDescriptor);
        }
        unlink(last);
        last.mDescriptor = -1;
        --mHeld;
    }
    return closing;
}

/// Notes where the object is now. What the system calls "(deleted)" may be a file of that name, or an object
/// that lost one of its names, so only a look tells whether that is a better hint than the old one. An object
/// without names is gone, unless its file system does not count them.
void DescriptorPool::remember(ReferenceNode& node, const FileAttributes& attributes)
{
    auto& system = NodeSystem::current();
    const auto isAt = [&](const char* path) {
        FileAttributes there;
        return system.attributes(NodeSystem::kNoFolder, path, there) == 0 && isSame(node.mIdentity, there);
    };
    if (!node.mPath)
        return;
    if (attributes.links == 0) {
        if (!isAt(node.mPath.get()))
            node.mPath = nullptr;
        return;
    }
    std::string path;
    if (system.pathOf(node.mDescriptor, path) != 0 || path == node.mPath.get())
        return;
    if (!path.ends_with(" (deleted)") || isAt(path.c_str()))
        replacePath(node, path);
}

void DescriptorPool::replacePath(ReferenceNode& node, std::string_view path)
{
    if (node.mPath)
        mMoves.note(node.mPath.get(), path);
    node.mPath = copied(path);
}

}
