#include "platform/files/reference_path.h"

#include "platform/files/reference_opening.h"

namespace platform {

namespace {

std::int64_t now()
{
    return std::chrono::steady_clock::now().time_since_epoch().count();
}

/// When the folder that a search would begin in was last changed.
std::int64_t folderModified(const std::string& path)
{
    FileAttributes attributes;
    const int problem =
        NodeSystem::current().attributes(NodeSystem::kNoFolder, folderOf(path).c_str(), attributes);
    return problem == 0 ? attributes.modified : 0;
}

class Locating {
public:
    Locating(ReferenceNode& node, LocatedNode& located, SearchLimits limits)
        : mNode(node), mLocated(located), mLimits(limits)
    {
    }

    int run()
    {
        mLocated.lease = mPool.lease(mNode);
        if (mLocated.lease) {
            bool isOurs = false;
            const int problem = askDescriptor(isOurs);
            if (isOurs)
                return problem;
            mPool.disown(mNode, mLocated.lease.get());
            mLocated.lease = {};
        }
        return openAgain();
    }

private:
    static constexpr int kAttempts = 5;

    bool isAt(const std::string& path) const
    {
        FileAttributes attributes;
        return !path.empty() && mSystem.attributes(NodeSystem::kNoFolder, path.c_str(), attributes) == 0
            && isSame(mNode.identity(), attributes);
    }

    /// The same, and no link leads there. Not true where the system cannot tell.
    bool isReallyAt(const std::string& path) const
    {
        const int descriptor = mSystem.openReal(path.c_str());
        if (descriptor < 0)
            return false;
        FileAttributes attributes;
        const int problem = mSystem.attributes(descriptor, "", attributes);
        mSystem.close(descriptor);
        return problem == 0 && isSame(mNode.identity(), attributes);
    }

    /// The system followed the object as long as it was open, but what it tells must be seen to be true.
    int askDescriptor(bool& isOurs)
    {
        const int descriptor = mLocated.lease.get();
        FileAttributes attributes;
        int problem = 0;
        isOurs = DescriptorPool::isStillOurs(mNode, descriptor, problem, attributes);
        if (!isOurs)
            return problem;
        std::string known = mPool.path(mNode);
        if (problem != 0) // then it must be seen without the descriptor
            return lookAt(withoutLinks(known)) == 0 ? 0 : problem;
        // Cheaper than to ask where it is. While the object is open its number belongs to no other.
        if (isReallyAt(known)) {
            mLocated.path = std::move(known);
            return 0;
        }
        // It may be moved between the answer and the look; one that is gone is not asked again.
        const int attempts = attributes.links == 0 ? 1 : kAttempts;
        for (int attempt = 0; attempt < attempts && problem == 0; ++attempt) {
            std::string told;
            problem = mSystem.pathOf(descriptor, told);
            if (problem == 0 && isAt(told)) {
                if (told != known)
                    mPool.setPath(mNode, told);
                mLocated.path = std::move(told);
                return 0;
            }
        }
        if (!known.empty() && isAt(known)) { // the system has no /proc, or calls it otherwise
            mLocated.path = withoutLinks(known);
            return 0;
        }
        if (problem == -ENAMETOOLONG)
            return problem;
        if (attributes.links == 0) {
            mLocated.lease = {};
            mPool.setGone(mNode);
            return -ENOENT;
        }
        return search(known);
    }

    /// Opens what is at the remembered path, if that is still the object.
    int openAgain()
    {
        const std::string known = mPool.path(mNode);
        if (known.empty())
            return -ENOENT;
        if (openAt(known) == 0)
            return 0;
        for (const std::string& guess : mPool.guesses(known))
            if (openAt(guess) == 0)
                return 0;
        return search(known);
    }

    /// A link may stand in the place of a folder that was moved.
    int openAt(std::string path)
    {
        int descriptor = mPool.opened([&] { return mSystem.openReal(path.c_str()); });
        if (isUntold(descriptor)) {
            path = withoutLinks(path);
            descriptor = mPool.opened([&] { return mSystem.open(NodeSystem::kNoFolder, path.c_str()); });
        }
        if (isOutOfDescriptors(descriptor))
            return lookAt(withoutLinks(path));
        if (descriptor < 0)
            return descriptor;
        FileIdentity there;
        const int problem = identify(descriptor, there);
        if (problem != 0 || !isSame(mNode.identity(), there)) {
            mSystem.close(descriptor);
            return problem != 0 ? problem : -ENOENT;
        }
        mLocated.lease = mPool.adopt(mNode, descriptor, path, there.handle);
        mLocated.path = std::move(path);
        return 0;
    }

    /// The same without a descriptor.
    int lookAt(std::string path)
    {
        FileAttributes attributes;
        if (const int problem = mSystem.attributes(NodeSystem::kNoFolder, path.c_str(), attributes);
            problem != 0)
            return problem;
        FileHandle handle;
        (void)mSystem.handle(NodeSystem::kNoFolder, path.c_str(), NodeSystem::HandlePurpose::Telling, handle);
        if (!isSame(mNode.identity(), attributes, handle))
            return -ENOENT;
        mLocated.path = std::move(path);
        return 0;
    }

    int search(const std::string& known)
    {
        const std::int64_t modified = folderModified(known);
        if (mPool.hasMissed(mNode, modified, now()))
            return -ENOENT;
        std::string found;
        if (searchObject(mNode.identity(), known, {}, mLimits, found) != 0) {
            mPool.setMissed(mNode, modified, now());
            return -ENOENT;
        }
        if (!mLocated.lease)
            return openAt(found);
        mLocated.path = withoutLinks(found);
        mPool.setPath(mNode, mLocated.path);
        return 0;
    }

    NodeSystem& mSystem = NodeSystem::current();
    DescriptorPool& mPool = DescriptorPool::shared();
    ReferenceNode& mNode;
    LocatedNode& mLocated;
    const SearchLimits mLimits;
};

}

int locate(ReferenceNode& node, LocatedNode& located, SearchLimits limits)
{
    return Locating(node, located, limits).run();
}

int locate(ReferenceNode& node, std::string& path, SearchLimits limits)
{
    LocatedNode located;
    const int problem = locate(node, located, limits);
    if (problem == 0)
        path = std::move(located.path);
    return problem;
}

}
