#include "watching/inotify_queue.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <thread>
#include <utility>

namespace lum {

using platform::MutexLock;

namespace {

// Room for a thousand events and more; what does not fit is read by the next wait.
constexpr std::size_t kBufferSize = 64 * 1024;
constexpr std::size_t kLongestEvent = 16 + 256;

// A lost link is told before its name goes, by less than this on any machine that is not starved.
constexpr std::chrono::milliseconds kSettlingTime(10);

// How long a wait that the system refuses keeps the thread from trying again.
constexpr std::chrono::milliseconds kPauseAfterFailure(100);

std::uint32_t eventsFor(std::uint32_t changes, bool isFolder)
{
    // The end and the moves of an object are always followed: they tell whether its path can be trusted.
    std::uint32_t events = inotify::kDeleteSelf | inotify::kMoveSelf;
    if (changes & (kVnodeAttrib | kVnodeDelete | kVnodeLink))
        events |= inotify::kAttrib;
    if (isFolder && (changes & (kVnodeWrite | kVnodeLink)))
        events |= inotify::kCreate | inotify::kDelete | inotify::kMovedFrom | inotify::kMovedTo;
    if (!isFolder && (changes & (kVnodeWrite | kVnodeExtend)))
        events |= inotify::kModify;
    return events;
}

class Descriptor {
public:
    Descriptor(InotifySystem& system, int number) : mSystem(system), mNumber(number) { }
    ~Descriptor()
    {
        if (mNumber >= 0)
            mSystem.close(mNumber);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const { return mNumber >= 0; }
    int number() const { return mNumber; }
    /// A path that leads to the object without looking up any other name.
    std::string path() const { return "/proc/self/fd/" + std::to_string(mNumber); }
    int leak() { return std::exchange(mNumber, -1); }

private:
    InotifySystem& mSystem;
    int mNumber;
};

}

/// One path that may have changed, and what is there now.
struct InotifyQueue::Look {
    Token token;
    int watch;
    FileIdentity object;
    std::optional<FileIdentity> folder;
    std::string path {}; ///< Empty when no look is needed.
    std::optional<FileStatus> now {};
    bool isAstray = false;
};

struct InotifyQueue::Batch {
    std::vector<std::pair<int, RawChanges>> changes; // a pair per watch, in the order of its first event
    std::unordered_map<int, std::size_t> places; // of the watches in `changes`, once there are many
    std::vector<Look> looks;
    bool hasLostEvents = false;
    std::optional<std::vector<int>> liveWatches; // looked at after a loss
    std::vector<int> endedWatches;

    RawChanges& of(int watch)
    {
        if (RawChanges* known = find(watch))
            return *known;
        changes.emplace_back(watch, RawChanges());
        if (changes.size() == kFew) {
            for (std::size_t place = 0; place < kFew; ++place)
                places.emplace(changes[place].first, place);
        } else if (changes.size() > kFew) {
            places.emplace(watch, changes.size() - 1);
        }
        return changes.back().second;
    }
    RawChanges* find(int watch)
    {
        if (changes.size() >= kFew) {
            const auto place = places.find(watch);
            return place == places.end() ? nullptr : &changes[place->second].second;
        }
        const auto place = std::find_if(
            changes.begin(), changes.end(), [watch](const auto& pair) { return pair.first == watch; });
        return place == changes.end() ? nullptr : &place->second;
    }

private:
    // Nearly every read is about a watch or two, for which a table would cost more than all the rest.
    static constexpr std::size_t kFew = 8;
};

std::unique_ptr<InotifyQueue> InotifyQueue::open(InotifySystem& system)
{
    Descriptor queue(system, system.openQueue());
    if (!queue)
        return nullptr;
    Descriptor waker(system, system.openWaker());
    if (!waker)
        return nullptr;
    std::unique_ptr<InotifyQueue> opened(new InotifyQueue(system, queue.number(), waker.number()));
    queue.leak();
    waker.leak();
    return opened;
}

InotifyQueue::InotifyQueue(InotifySystem& system, int queue, int waker)
    : mSystem(system)
    , mQueue(queue)
    , mWaker(waker)
    , mWatches(system, queue)
    , mBuffer(std::make_unique_for_overwrite<std::byte[]>(kBufferSize))
{
}

InotifyQueue::~InotifyQueue()
{
    close();
}

int InotifyQueue::descriptor() const
{
    const MutexLock lock(mLock);
    return mIsOpen ? mQueue : -1;
}

bool InotifyQueue::add(Token token, const std::string& path, std::uint32_t changes)
{
    // The watch is put on a descriptor, so that it and what is remembered belong to one object. The
    // descriptor goes at once: kept open it would hold back the news of a removal and keep a volume from
    // being unmounted.
    bool isReal = false;
    const Descriptor object(mSystem, mSystem.openPath(path, isReal));
    if (!object)
        return false;
    Entry entry;
    entry.changes = changes;
    if (mSystem.status(object.number(), entry.state.status) < 0)
        return false;
    if (!isReal)
        entry.path = mSystem.pathOf(object.number());
    if (entry.path.empty())
        entry.path = path;
    FileStatus folder;
    if (mSystem.status(InotifyWatches::folderOf(entry.path), folder) >= 0)
        entry.folder = folder;
    const std::uint32_t events = eventsFor(changes, entry.state.status.isFolder()) | inotify::kMaskAdd;
    // Opened before the lock is taken: a look-up on a volume that does not answer must hold up nobody else.
    const std::string parentPath = InotifyWatches::parentToWatch(entry);
    const Descriptor parent(mSystem, parentPath.empty() ? -1 : mSystem.openPath(parentPath, isReal));

    // Held across the registration, so that no event of a new watch is met before its entry is there.
    const MutexLock lock(mLock);
    if (!mIsOpen)
        return false;
    entry.watch = mSystem.addWatch(mQueue, object.path(), events);
    if (entry.watch == -ENOENT || entry.watch == -ENOTDIR) // no /proc here
        entry.watch = mSystem.addWatch(mQueue, path, events);
    if (entry.watch == -EACCES || entry.watch == -EPERM)
        return false;
    entry.watch = std::max(entry.watch, -1);
    mWatches.add(token, std::move(entry), parent ? parent.path() : "");
    return true;
}

int InotifyQueue::remove(Token token)
{
    const MutexLock lock(mLock);
    return mWatches.remove(token);
}

std::vector<KernelQueue::Event> InotifyQueue::wait(std::chrono::milliseconds limit)
{
    const std::vector<Doubt> doubts = std::exchange(mDoubts, {});
    const std::vector<InotifyEvent> events =
        readEvents(doubts.empty() ? limit : std::min(limit, kSettlingTime));
    if (events.empty() && doubts.empty())
        return {};
    Batch batch;
    collect(doubts, events, batch);
    lookAtPaths(batch);
    // An event that ended the wait early says nothing about the others: they are looked at once more.
    if (!events.empty()) {
        const auto now = std::chrono::steady_clock::now();
        std::copy_if(doubts.begin(), doubts.end(), std::back_inserter(mDoubts),
            [now](const Doubt& doubt) { return doubt.until > now; });
    }
    return settle(batch);
}

std::vector<InotifyEvent> InotifyQueue::readEvents(std::chrono::milliseconds limit)
{
    const int ready = mSystem.wait(mQueue, mWaker, limit);
    if (ready > 0 && (ready & InotifySystem::kWaker))
        mSystem.rearm(mWaker);
    std::ptrdiff_t length = 0;
    if (ready > 0 && (ready & InotifySystem::kQueue))
        length = mSystem.read(mQueue, { mBuffer.get(), kBufferSize });
    if (ready < 0 || (length < 0 && length != -EAGAIN)) {
        std::this_thread::sleep_for(std::min(limit, kPauseAfterFailure));
        return {};
    }
    const std::size_t filled = length > 0 ? static_cast<std::size_t>(length) : 0;
    mIsDrained = filled + kLongestEvent <= kBufferSize;
    return decodeInotify({ mBuffer.get(), filled });
}

void InotifyQueue::collect(
    const std::vector<Doubt>& doubts, const std::vector<InotifyEvent>& events, Batch& batch)
{
    const MutexLock lock(mLock);
    for (const Doubt& doubt : doubts) {
        const Entry* entry = mWatches.find(doubt.token);
        if (entry && entry->watch >= 0)
            batch.of(entry->watch).isNameInDoubt = true;
    }
    for (const InotifyEvent& event : events) {
        batch.hasLostEvents |= (event.flags & inotify::kOverflow) != 0;
        if (!mWatches.hasWatch(event.watch))
            continue;
        batch.of(event.watch).add(event);
        if (!(event.flags & inotify::kDelete))
            continue;
        for (const int subfolder : mWatches.subfoldersOf(event.watch, event.name)) {
            RawChanges& changes = batch.of(subfolder);
            changes.isNameInDoubt = changes.isNameRemoved = true;
        }
    }
    for (auto& [watch, changes] : batch.changes) {
        for (const Token token : mWatches.entriesOf(watch)) {
            const Entry& entry = *mWatches.find(token);
            Look& look = batch.looks.emplace_back(Look { token, watch, entry.state.status, entry.folder });
            if (batch.hasLostEvents || changes.needsLook(entry.changes))
                look.path = entry.path;
        }
    }
    if (!batch.hasLostEvents)
        return;
    for (const Token token : mWatches.liveEntries()) {
        const Entry& entry = *mWatches.find(token);
        if (!batch.find(entry.watch))
            batch.looks.push_back({ token, entry.watch, entry.state.status, entry.folder, entry.path });
    }
}

void InotifyQueue::lookAtPaths(Batch& batch)
{
    // No lock is held here: a look at a volume that does not answer must not stop those who add and remove.
    if (batch.hasLostEvents)
        batch.liveWatches = mSystem.liveWatches(mQueue);
    for (Look& look : batch.looks) {
        if (!look.path.empty())
            lookAt(look);
        const RawChanges* raw = batch.find(look.watch);
        if (raw && raw->isUnmounted() && !isKnownUnmounted(look.object.device))
            mUnmountedDevices.push_back(look.object.device);
    }
}

void InotifyQueue::lookAt(Look& look)
{
    FileStatus now;
    const int failure = mSystem.status(look.path, now);
    if (failure >= 0)
        look.now = now;
    if (failure >= 0 && now == look.object)
        return;
    FileStatus folder;
    look.isAstray = (failure < 0 && failure != -ENOENT)
        || (look.folder
            && (mSystem.status(InotifyWatches::folderOf(look.path), folder) < 0 || folder != *look.folder));
}

std::vector<KernelQueue::Event> InotifyQueue::settle(Batch& batch)
{
    const MutexLock lock(mLock);
    std::vector<Event> events;
    for (const Look& look : batch.looks) {
        Entry* entry = mWatches.find(look.token);
        if (!entry)
            continue;
        const std::uint32_t changes = settle(look, batch, *entry) & entry->changes;
        if (changes)
            events.push_back({ look.token, changes });
    }
    for (const auto& [number, changes] : batch.changes) {
        if (changes.hasEnded())
            mWatches.forgetWatch(number);
    }
    for (const int number : batch.endedWatches)
        mWatches.forgetWatch(number);
    if (mIsDrained)
        mUnmountedDevices.clear();
    return events;
}

std::uint32_t InotifyQueue::settle(const Look& look, Batch& batch, Entry& entry)
{
    std::uint32_t changes = 0;
    if (const RawChanges* raw = batch.find(look.watch)) {
        const VnodeReport report = vnodeChanges(*raw, entry.state, look.now, look.isAstray);
        if (report.mustSettle)
            mDoubts.push_back({ look.token, std::chrono::steady_clock::now() + kSettlingTime });
        changes = report.changes;
        if (raw->hasEnded())
            return changes;
    }
    if (batch.hasLostEvents) {
        const WatchFate fate = fateOf(look, batch);
        if (fate == WatchFate::Dead || fate == WatchFate::Unmounted)
            batch.endedWatches.push_back(look.watch);
        changes |= vnodeChangesAfterLoss(fate, entry.state, look.now);
    }
    return changes;
}

WatchFate InotifyQueue::fateOf(const Look& look, const Batch& batch) const
{
    if (!batch.liveWatches)
        return WatchFate::Unknown;
    if (std::binary_search(batch.liveWatches->begin(), batch.liveWatches->end(), look.watch))
        return WatchFate::Alive;
    // A volume takes all its watches with it, and the news of most of them may be among what was lost.
    return isKnownUnmounted(look.object.device) ? WatchFate::Unmounted : WatchFate::Dead;
}

bool InotifyQueue::isKnownUnmounted(std::uint64_t device) const
{
    return std::find(mUnmountedDevices.begin(), mUnmountedDevices.end(), device) != mUnmountedDevices.end();
}

void InotifyQueue::wake()
{
    const MutexLock lock(mLock);
    if (mIsOpen)
        mSystem.wake(mWaker);
}

int InotifyQueue::close()
{
    const MutexLock lock(mLock);
    if (!std::exchange(mIsOpen, false))
        return 0;
    mWatches.clear();
    mSystem.close(mWaker);
    return -mSystem.close(mQueue);
}

}
