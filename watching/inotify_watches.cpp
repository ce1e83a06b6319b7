#include "watching/inotify_watches.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace lum {

namespace {

std::string_view lastName(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

}

InotifyWatches::InotifyWatches(InotifySystem& system, int queue) : mSystem(system), mQueue(queue) { }

std::string InotifyWatches::folderOf(const std::string& path)
{
    const std::string folder = path.substr(0, path.size() - lastName(path).size());
    return folder.empty() ? "." : folder;
}

std::string InotifyWatches::parentToWatch(const Entry& entry)
{
    const bool leans = entry.state.status.isFolder() && (entry.changes & kVnodeDelete);
    return leans && !lastName(entry.path).empty() ? folderOf(entry.path) : std::string();
}

void InotifyWatches::add(Token token, Entry entry, const std::string& parent)
{
    if (entry.watch >= 0) {
        mWatches[entry.watch].entries.push_back(token);
        if (!parent.empty())
            watchParent(entry, token, parent);
    }
    mEntries.emplace(token, std::move(entry));
}

int InotifyWatches::remove(Token token)
{
    const auto place = mEntries.find(token);
    if (place == mEntries.end())
        return 0;
    Entry entry = std::move(place->second);
    mEntries.erase(place);
    if (entry.parentWatch >= 0)
        leaveParent(entry, token);
    if (entry.watch < 0)
        return 0;
    std::erase(mWatches[entry.watch].entries, token);
    return giveUpIfUnused(entry.watch);
}

void InotifyWatches::watchParent(Entry& entry, Token token, const std::string& parent)
{
    const std::uint32_t events = inotify::kDelete | inotify::kOnlyFolder | inotify::kMaskAdd;
    const int watch = mSystem.addWatch(mQueue, parent, events);
    if (watch < 0)
        return;
    entry.parentWatch = watch;
    auto& subfolders = mWatches[watch].subfolders;
    if (!subfolders)
        subfolders = std::make_unique<Subfolders>();
    subfolders->emplace(lastName(entry.path), token);
}

void InotifyWatches::leaveParent(Entry& entry, Token token)
{
    const auto parent = mWatches.find(std::exchange(entry.parentWatch, -1));
    if (parent == mWatches.end() || !parent->second.subfolders)
        return;
    auto& subfolders = parent->second.subfolders;
    auto [place, end] = subfolders->equal_range(std::string(lastName(entry.path)));
    while (place != end && place->second != token)
        ++place;
    if (place != end)
        subfolders->erase(place);
    if (subfolders->empty())
        subfolders.reset();
    giveUpIfUnused(parent->first);
}

int InotifyWatches::giveUpIfUnused(int number)
{
    const auto watch = mWatches.find(number);
    if (!watch->second.entries.empty() || watch->second.subfolders)
        return 0;
    mWatches.erase(watch);
    const int status = mSystem.removeWatch(mQueue, number);
    // The kernel has already given up the watch of an object that went away; its event is on the way.
    return status < 0 && status != -EINVAL ? -status : 0;
}

void InotifyWatches::forgetWatch(int number)
{
    const auto place = mWatches.find(number);
    if (place == mWatches.end())
        return;
    const Watch watch = std::move(place->second);
    mWatches.erase(place);
    for (const Token token : watch.entries) {
        Entry& entry = mEntries[token];
        entry.watch = -1;
        if (entry.parentWatch >= 0)
            leaveParent(entry, token);
    }
}

void InotifyWatches::clear()
{
    mEntries.clear();
    mWatches.clear();
}

InotifyWatches::Entry* InotifyWatches::find(Token token)
{
    const auto place = mEntries.find(token);
    return place == mEntries.end() ? nullptr : &place->second;
}

const std::vector<InotifyWatches::Token>& InotifyWatches::entriesOf(int watch) const
{
    const auto place = mWatches.find(watch);
    return place == mWatches.end() ? mNoEntries : place->second.entries;
}

std::vector<int> InotifyWatches::subfoldersOf(int watch, std::string_view name) const
{
    std::vector<int> watches;
    const auto place = mWatches.find(watch);
    if (place == mWatches.end() || !place->second.subfolders)
        return watches;
    const auto [first, last] = place->second.subfolders->equal_range(std::string(name));
    for (auto subfolder = first; subfolder != last; ++subfolder) {
        const int own = mEntries.at(subfolder->second).watch;
        if (own >= 0)
            watches.push_back(own);
    }
    return watches;
}

std::vector<InotifyWatches::Token> InotifyWatches::liveEntries() const
{
    std::vector<Token> tokens;
    for (const auto& [token, entry] : mEntries) {
        if (entry.watch >= 0)
            tokens.push_back(token);
    }
    std::sort(tokens.begin(), tokens.end());
    return tokens;
}

}
