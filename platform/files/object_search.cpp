#include "platform/files/object_search.h"

#include "platform/files/descriptor_pool.h"
#include "platform/files/folder_entries.h"
#include "platform/files/open_file.h"
#include "platform/files/reference_opening.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

class Search {
public:
    Search(const FileIdentity& sought, SearchLimits limits)
        : mSought(sought)
        , mEntriesLeft(limits.entries)
        , mEnd(Clock::now() + limits.time)
        , mCanMiss(limits.mayTrustTheLast && !sought.isLayered && sought.kind != FileKind::Folder)
    {
    }

    /// Begins in an open folder; false when it is known that nothing would be found from there.
    bool begin(const std::string& path, int folder);
    /// Notes for other searches that this one has found nothing.
    void miss();

    const std::string& found() const { return mFound; }
    bool isOver() const
    {
        return !mFound.empty() || mEntriesLeft == 0 || (mFoldersRead >= kNearest && Clock::now() >= mEnd);
    }

    /// Whether the object is at `path`.
    bool look(const std::string& path);
    /// Opens a folder of the sought volume to be read; nothing when it is none, or may not be read.
    std::optional<int> opened(const std::string& path, bool& isElsewhere) const;
    /// Looks through a folder and all below it, but for the tree at `except`.
    void lookBelow(const std::string& path, const std::string& except);
    /// Looks at the end of a path in each folder of a folder: one that was renamed has it.
    bool lookAtEnd(const std::string& path, const std::string& end);
    /// The entry of a folder that has this number and is a folder.
    std::string folderNumbered(std::uint64_t inode, const std::string& path);

private:
    /// The nearest folders are read however slow the machine is: what was moved was mostly moved to one of
    /// them.
    static constexpr std::size_t kNearest = 100;

    void lookThrough(const std::string& path, std::deque<std::string>& folders, const std::string& except);
    bool mayBeSought(const FolderEntry& entry, bool areNumbersTrue) const
    {
        if (entry.inode == mSought.inode)
            return true;
        // Layered file systems list folders under other numbers than they have. One look more is little
        // beside reading a folder.
        if (mSought.kind == FileKind::Folder)
            return entry.kind == FolderEntry::Folder;
        return !areNumbersTrue && (entry.kind == FolderEntry::Link) == (mSought.kind == FileKind::Link);
    }
    bool areNumbersTrue(int folder) const;
    bool isSought(int folder, const char* name) const;

    NodeSystem& mSystem = NodeSystem::current();
    const FileIdentity& mSought;
    std::size_t mEntriesLeft;
    std::size_t mFoldersRead = 0;
    const Clock::time_point mEnd;
    std::string mFound;
    const bool mCanMiss; // whether entries are all listed under the numbers they have
    MissedSearch mMissed;
};

bool Search::begin(const std::string& path, int folder)
{
    FileAttributes attributes;
    if (!mCanMiss || mSystem.attributes(folder, "", attributes) != 0)
        return true;
    mMissed.from = path;
    mMissed.volume = mSought.volume;
    mMissed.modified = attributes.modified;
    mMissed.at = Clock::now().time_since_epoch().count();
    const auto last = DescriptorPool::shared().lastMiss();
    return !last || !last->tells(path, mSought.volume, attributes.modified, mMissed.at, mSought.inode);
}

void Search::miss()
{
    // Within a tick of the clock of its file system a folder may change twice and have one time.
    constexpr std::int64_t kTick = 20'000'000;
    const std::int64_t today = std::chrono::system_clock::now().time_since_epoch().count();
    if (mMissed.from.empty() || today - mMissed.modified < kTick)
        return;
    std::ranges::sort(mMissed.inodes);
    DescriptorPool::shared().setLastMiss(std::make_shared<const MissedSearch>(std::move(mMissed)));
}

bool Search::isSought(int folder, const char* name) const
{
    FileAttributes attributes;
    if (mSystem.attributes(folder, name, attributes) != 0 || !isSame(mSought, attributes))
        return false;
    FileHandle handle;
    (void)mSystem.handle(folder, name, NodeSystem::HandlePurpose::Telling, handle);
    return isSame(mSought, attributes, handle);
}

bool Search::look(const std::string& path)
{
    bool isElsewhere = false;
    const std::string folderPath = folderOf(path);
    if (const auto folder = opened(folderPath, isElsewhere)) {
        const OpenFile closing(mSystem, *folder);
        if (isSought(*folder, std::string(nameOf(path)).c_str()))
            mFound = path;
    }
    return !mFound.empty();
}

std::optional<int> Search::opened(const std::string& path, bool& isElsewhere) const
{
    const int folder = DescriptorPool::shared().opened(
        [&] { return mSystem.openFolder(NodeSystem::kNoFolder, path.c_str()); });
    if (folder < 0)
        return std::nullopt;
    NodeSystem::Volume volume;
    isElsewhere = mSystem.volume(folder, volume) != 0 || volume.id != mSought.volume;
    if (!isElsewhere)
        return folder;
    mSystem.close(folder);
    return std::nullopt;
}

/// Where the layers lie on several devices, files have another device number than their folders, and those
/// that were copied up are listed under the number of the copy.
bool Search::areNumbersTrue(int folder) const
{
    FileAttributes attributes;
    return !mSought.isLayered
        || (mSystem.attributes(folder, "", attributes) == 0 && attributes.device == mSought.device);
}

void Search::lookThrough(const std::string& path, std::deque<std::string>& folders, const std::string& except)
{
    bool isElsewhere = false;
    const auto folder = opened(path, isElsewhere);
    if (!folder)
        return;
    ++mFoldersRead;
    FolderReader reader(mSystem, *folder);
    const bool areNumbersTrue = this->areNumbersTrue(*folder);
    FolderEntry entry;
    while (!isOver() && reader.next(entry) > 0) {
        --mEntriesLeft;
        if (mCanMiss)
            mMissed.inodes.push_back(entry.inode);
        if (mayBeSought(entry, areNumbersTrue) && isSought(reader.folder(), entry.name.data())) {
            mFound = joined(path, entry.name);
            return;
        }
        // A kind that is not told is found out by opening it.
        if (entry.kind == FolderEntry::Folder || entry.kind == FolderEntry::Unknown) {
            std::string below = joined(path, entry.name);
            if (below != except)
                folders.push_back(std::move(below));
        }
    }
}

void Search::lookBelow(const std::string& path, const std::string& except)
{
    std::deque<std::string> folders { path };
    while (!folders.empty() && !isOver()) {
        const std::string next = std::move(folders.front());
        folders.pop_front();
        lookThrough(next, folders, except);
    }
}

bool Search::lookAtEnd(const std::string& path, const std::string& end)
{
    bool isElsewhere = false;
    const auto folder = opened(path, isElsewhere);
    if (!folder)
        return false;
    FolderReader reader(mSystem, *folder);
    FolderEntry entry;
    while (!isOver() && reader.next(entry) > 0) {
        --mEntriesLeft;
        if (entry.kind == FolderEntry::Folder || entry.kind == FolderEntry::Unknown)
            look(joined(path, entry.name) + end);
    }
    return !mFound.empty();
}

std::string Search::folderNumbered(std::uint64_t inode, const std::string& path)
{
    bool isElsewhere = false;
    const auto folder = opened(path, isElsewhere);
    if (!folder)
        return {};
    FolderReader reader(mSystem, *folder);
    FolderEntry entry;
    while (!isOver() && reader.next(entry) > 0) {
        --mEntriesLeft;
        if (entry.inode == inode && (entry.kind == FolderEntry::Folder || entry.kind == FolderEntry::Unknown))
            return joined(path, entry.name);
    }
    return {};
}

}

int searchObject(const FileIdentity& sought, const std::string& lastPath,
    std::span<const std::uint64_t> ancestors, SearchLimits limits, std::string& found)
{
    Search search(sought, limits);
    std::string searched;
    std::string folderPath = lastPath;
    for (std::size_t level = 0; folderPath != "/" && !folderPath.empty() && !search.isOver(); ++level) {
        const std::string below = folderPath;
        folderPath = folderOf(folderPath);
        bool isElsewhere = false;
        const auto folder = search.opened(folderPath, isElsewhere);
        if (isElsewhere)
            break; // the volume ends here, or is no longer mounted
        if (!folder)
            continue;
        OpenFile closing(NodeSystem::current(), *folder);
        const bool isFirst = searched.empty();
        const bool isWorthIt = !isFirst || search.begin(folderPath, *folder);
        (void)closing.close();
        if (isFirst && level > 0 && search.lookAtEnd(folderPath, lastPath.substr(below.size())))
            break;
        if (!isWorthIt)
            return -ENOENT;
        if (isFirst && level > 0 && level <= ancestors.size()) {
            const std::string renamed = search.folderNumbered(ancestors[level - 1], folderPath);
            if (!renamed.empty())
                search.lookBelow(renamed, searched);
        }
        if (!search.isOver())
            search.lookBelow(folderPath, searched);
        searched = folderPath;
    }
    if (search.found().empty()) {
        search.miss();
        return -ENOENT;
    }
    found = search.found();
    return 0;
}

}
