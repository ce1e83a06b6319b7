#pragma once

#include "platform/files/missed_search.h"
#include "platform/files/node_system.h"
#include "platform/files/path_moves.h"
#include "platform/files/reference_node.h"
#include "platform/objects/mutex.h"

#include <cerrno>
#include <vector>

namespace platform {

/// Holds objects of references open, as many as the process can spare, so that the system follows them.
///
/// A descriptor that only stands for an object keeps its inode from being given to another one and leads to
/// its path after any rename. There may be more references than descriptors: those used least recently give
/// theirs back, and remember their path instead. The pool also guards the paths of all nodes.
///
/// A forked child has copies of all descriptors under the same numbers, so it goes on with them. Threads:
/// any.
class DescriptorPool {
public:
    static DescriptorPool& shared();

    /// A descriptor that stays open for a scope; none when get() is negative.
    class Lease {
    public:
        Lease() = default;
        Lease(Lease&& other) noexcept
            : mNode(std::exchange(other.mNode, nullptr)), mDescriptor(std::exchange(other.mDescriptor, -1))
        {
        }
        Lease& operator=(Lease other) noexcept
        {
            std::swap(mNode, other.mNode);
            std::swap(mDescriptor, other.mDescriptor);
            return *this;
        }
        ~Lease();

        int get() const { return mDescriptor; }
        explicit operator bool() const { return mDescriptor >= 0; }

    private:
        friend class DescriptorPool;
        Lease(ReferenceNode* node, int descriptor) : mNode(node), mDescriptor(descriptor) { }

        ReferenceNode* mNode = nullptr; // null for a descriptor that is the lease's own
        int mDescriptor = -1;
    };

    /// The node's descriptor, if it holds one. The node outlives the lease.
    Lease lease(ReferenceNode& node);
    /// Gives the node a descriptor of its object, or the lease alone when its volume must stay free to be
    /// unmounted; `path` is where that is. Gives the node the handle as well, if it lacks one.
    Lease adopt(ReferenceNode& node, int descriptor, std::string_view path, const FileHandle& handle);
    /// Whether the number still stands for the node's object: another part of the program may have closed
    /// what it did not open, and got the number since. Tells the object's attributes, or why there are none.
    static bool isStillOurs(
        const ReferenceNode& node, int descriptor, int& problem, FileAttributes& attributes);
    /// Closes the descriptor of a node whose object is gone for good, once nobody uses it: the space of a
    /// removed file is given back only then.
    void setGone(ReferenceNode& node);
    /// Takes a descriptor from the node without closing it: something else has that number now.
    void disown(ReferenceNode& node, int descriptor);

    /// Where the object was last; empty when it is known to be gone.
    std::string path(ReferenceNode& node);
    void setPath(ReferenceNode& node, std::string_view path);
    /// Where an object that was at `path` may be, going by where others were found.
    std::vector<std::string> guesses(std::string_view path);
    /// The last search that found nothing; null when there was none since descriptors were released.
    std::shared_ptr<const MissedSearch> lastMiss();
    void setLastMiss(std::shared_ptr<const MissedSearch> miss);

    /// Whether a search failed a moment ago, and nothing has changed since in the folder it began in.
    bool hasMissed(const ReferenceNode& node, std::int64_t folderModified, std::int64_t now);
    void setMissed(ReferenceNode& node, std::int64_t folderModified, std::int64_t now);

    /// What `open` answers, after making room for as long as the process has no descriptor for it.
    template<typename Open> int opened(const Open& open)
    {
        for (;;) {
            const int descriptor = open();
            if ((descriptor != -EMFILE && descriptor != -ENFILE) || !makeRoom())
                return descriptor;
        }
    }
    /// Halves the budget and closes what is beyond it; false when there is nothing left to close.
    bool makeRoom();
    /// Closes all that nobody is using, forgets what searches came by, and takes the budget from the limit of
    /// the process anew.
    void releaseAll();

    std::size_t budget();
    std::size_t held();

private:
    friend class ReferenceNode;
    static constexpr std::size_t kLeast = 16;
    static constexpr std::size_t kMost = 4096;

    DescriptorPool();

    static std::size_t budgetOfProcess();
    static std::unique_ptr<char[]> copied(std::string_view path);
    static void closeAll(const std::vector<int>& descriptors);

    void forget(ReferenceNode& node);
    void unpin(ReferenceNode& node);
    void use(ReferenceNode& node) NS_REQUIRES(mLock);
    void linkAsNewest(ReferenceNode& node) NS_REQUIRES(mLock);
    void unlink(ReferenceNode& node) NS_REQUIRES(mLock);
    /// Takes the descriptors of the least recently used until `count` are left, as far as they are not in
    /// use.
    std::vector<int> evictBeyond(std::size_t count) NS_REQUIRES(mLock);
    void remember(ReferenceNode& node, const FileAttributes& attributes) NS_REQUIRES(mLock);
    void replacePath(ReferenceNode& node, std::string_view path) NS_REQUIRES(mLock);

    Mutex mLock;
    ReferenceNode* mNewest NS_GUARDED_BY(mLock) = nullptr;
    ReferenceNode* mOldest NS_GUARDED_BY(mLock) = nullptr;
    std::size_t mHeld NS_GUARDED_BY(mLock) = 0;
    std::size_t mBudget NS_GUARDED_BY(mLock);
    PathMoves mMoves NS_GUARDED_BY(mLock);
    std::shared_ptr<const MissedSearch> mLastMiss NS_GUARDED_BY(mLock);
};

}
