#pragma once

#include "watching/inotify_system.h"
#include "watching/kernel_queue.h"

#include <unordered_map>

namespace lum {

/// The paths added to an inotify queue, and the kernel's watches that they share.
///
/// The kernel has one watch per object, however many paths lead to it, and one mask per watch. So each watch
/// has a list of entries with masks of their own, asks for the sum of them, and is given up with its last
/// entry.
///
/// A folder that somebody is in when it is removed tells nothing about that. Its entry therefore also leans
/// on a watch of the folder above, where the system allows one.
///
/// Threads: one at a time.
class InotifyWatches {
public:
    using Token = KernelQueue::Token;

    struct Entry {
        int watch = -1; ///< -1 once nothing more can be reported.
        int parentWatch = -1; ///< May be one that the kernel has given up; numbers are never used twice.
        std::uint32_t changes = 0;
        std::string path; ///< Where the object was when it was added, without symbolic links.
        std::optional<FileIdentity> folder; ///< The one that the path is in; empty when it could not be seen.
        WatchedState state;
    };

    InotifyWatches(InotifySystem& system, int queue);

    /// The path of the folder that a path is in.
    static std::string folderOf(const std::string& path);
    /// The folder above an entry that leans on one; empty for the others.
    static std::string parentToWatch(const Entry& entry);

    /// Takes in a path whose watch has just been made, or was refused (-1). `parent` is how to reach the
    /// folder above; empty when there is none to lean on.
    void add(Token token, Entry entry, const std::string& parent);
    /// Returns 0 or an errno value; an unknown token is no failure.
    int remove(Token token);
    /// The kernel has given up the watch: its entries stay, and report nothing more.
    void forgetWatch(int number);
    void clear();

    Entry* find(Token token);
    bool hasWatch(int watch) const { return mWatches.count(watch) != 0; }
    /// The entries of a watch, in the order they were added.
    const std::vector<Token>& entriesOf(int watch) const;
    /// The watches of the folders of that name that lean on `watch`.
    std::vector<int> subfoldersOf(int watch, std::string_view name) const;
    /// Every entry that can report, in the order they were added.
    std::vector<Token> liveEntries() const;

private:
    using Subfolders = std::unordered_multimap<std::string, Token>;
    struct Watch {
        std::vector<Token> entries;
        /// Entries that lean on this watch, by their name in this folder.
        std::unique_ptr<Subfolders> subfolders;
    };

    void watchParent(Entry& entry, Token token, const std::string& parent);
    void leaveParent(Entry& entry, Token token);
    int giveUpIfUnused(int number);

    InotifySystem& mSystem;
    const int mQueue;
    std::unordered_map<Token, Entry> mEntries;
    std::unordered_map<int, Watch> mWatches;
    const std::vector<Token> mNoEntries;
};

}
