#include "LUMFoundation/OVKQueue.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSThread.h"
#include "platform/objects/live_objects.h"
#include "watching/vnode_changes.h"
#include "watching/watch_delivery.h"
#include "watching/watch_loop.h"

#include <cerrno>
#include <system_error>

constinit std::atomic<OVKQueue*> gOVKQueueSharedQueueSingleton = nullptr;

namespace {

// What is asked for is handed on as it is.
template<OVKQueueNote Public, lum::VnodeChange Internal>
constexpr bool kIsSame = static_cast<std::uint32_t>(Public) == static_cast<std::uint32_t>(Internal);
static_assert(kIsSame<OVKQueueNoteDelete, lum::kVnodeDelete>);
static_assert(kIsSame<OVKQueueNoteWrite, lum::kVnodeWrite>);
static_assert(kIsSame<OVKQueueNoteExtend, lum::kVnodeExtend>);
static_assert(kIsSame<OVKQueueNoteAttrib, lum::kVnodeAttrib>);
static_assert(kIsSame<OVKQueueNoteLink, lum::kVnodeLink>);
static_assert(kIsSame<OVKQueueNoteRename, lum::kVnodeRename>);
static_assert(kIsSame<OVKQueueNoteRevoke, lum::kVnodeRevoke>);

std::unique_ptr<lum::KernelQueue> openQueue()
{
    auto queue = lum::KernelQueue::open();
    if (!queue)
        throw std::system_error(EMFILE, std::generic_category(), "the system refuses an event queue");
    return queue;
}

constexpr std::uint32_t kDefaultFlags =
    OVKQueueNoteRename | OVKQueueNoteAttrib | OVKQueueNoteWrite | OVKQueueNoteDelete;

constexpr NSMethod kMethods[] = {
    NSMethodOf<"queueFD", &OVKQueue::queueFD>(),
    NSMethodOf<"addPathToQueue:", &OVKQueue::addPathToQueue>(),
    NSMethodOf<"addPath:", &OVKQueue::addPath>(),
    NSMethodOf<"addPathToQueue:notifyingAbout:", &OVKQueue::addPathToQueueNotifyingAbout>(),
    NSMethodOf<"removePath:", &OVKQueue::removePath>(),
    NSMethodOf<"removePathFromQueue:", &OVKQueue::removePathFromQueue>(),
    NSMethodOf<"removeAllPathsFromQueue", &OVKQueue::removeAllPathsFromQueue>(),
    NSMethodOf<"watcherThread:", &OVKQueue::watcherThread>(),
    NSMethodOf<"postNotification:forFile:", &OVKQueue::postNotification>(),
    NSMethodOf<"delegate", &OVKQueue::delegate>(),
    NSMethodOf<"setDelegate:", &OVKQueue::setDelegate>(),
    NSMethodOf<"alwaysNotify", &OVKQueue::alwaysNotify>(),
    NSMethodOf<"setAlwaysNotify:", &OVKQueue::setAlwaysNotify>(),
};

}

struct OVKQueue::Core {
    Core(std::unique_ptr<lum::KernelQueue> queue, const NSId& watcher)
        : loop(std::move(queue)), delivery(watcher)
    {
    }

    void run()
    {
        loop.run([this](const NSRef<NSString>& path, std::uint32_t changes) {
            delivery.deliverChanges(path, changes);
        });
    }

    lum::WatchLoop loop;
    lum::WatchDelivery delivery;
};

const NSClass& OVKQueue::classObject()
{
    static const NSClass& type = NSClass::define("OVKQueue", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<OVKQueue> OVKQueue::sharedFileWatcher()
{
    // Deliberate: always an OVKQueue, whichever class is asked.
    static platform::Mutex monitor;
    const platform::MutexLock lock(monitor);
    if (!gOVKQueueSharedQueueSingleton)
        gOVKQueueSharedQueueSingleton = platform::makeImmortal(init());
    return NSShare(gOVKQueueSharedQueueSingleton.load());
}

NSRef<OVKQueue> OVKQueue::init()
{
    try {
        return NSMake<OVKQueue>();
    } catch (const std::system_error&) { // no more queues, or no more threads
        return nullptr;
    }
}

OVKQueue::OVKQueue() : OVKQueue(openQueue()) { }

OVKQueue::OVKQueue(std::unique_ptr<lum::KernelQueue> queue)
    : mCore(std::make_shared<Core>(std::move(queue), NSShare<NSObject>(this)))
{
    // The thread has no part in the watcher itself, or the watcher would never end.
    mCore->loop.claim();
    NSThread::detachNewThread([core = mCore] { core->run(); });
}

OVKQueue::~OVKQueue()
{
    mCore->loop.stop();
}

std::int32_t OVKQueue::queueFD() const
{
    return mCore->loop.descriptor();
}

void OVKQueue::addPathToQueue(const NSRef<NSString>& path)
{
    addPath(path);
}

void OVKQueue::addPath(const NSRef<NSString>& path)
{
    // Deliberate: growth, link counts and revocation are reported only to those who ask for them.
    addPathToQueueNotifyingAbout(path, kDefaultFlags);
}

void OVKQueue::addPathToQueueNotifyingAbout(const NSRef<NSString>& path, std::uint32_t flags)
{
    mCore->loop.add(path, flags);
}

void OVKQueue::removePath(const NSRef<NSString>& path)
{
    removePathFromQueue(path);
}

void OVKQueue::removePathFromQueue(const NSRef<NSString>& path)
{
    mCore->loop.remove(path);
}

void OVKQueue::removeAllPathsFromQueue()
{
    mCore->loop.removeAll();
}

void OVKQueue::watcherThread(const NSId& /*ignored*/)
{
    if (mCore->loop.claim())
        mCore->run();
}

void OVKQueue::postNotification(const NSRef<NSString>& name, const NSRef<NSString>& path)
{
    mCore->delivery.deliver(name, path);
}

NSId OVKQueue::delegate() const
{
    return mCore->delivery.delegate();
}

void OVKQueue::setDelegate(const NSId& delegate)
{
    mCore->delivery.setDelegate(delegate);
}

bool OVKQueue::alwaysNotify() const
{
    return mCore->delivery.alwaysNotify();
}

void OVKQueue::setAlwaysNotify(bool alwaysNotify)
{
    mCore->delivery.setAlwaysNotify(alwaysNotify);
}

NSRef<NSString> OVKQueue::description() const
{
    return NSString::stringWithFormat("%@ { watchedPaths = %@, alwaysNotify = %@ }",
        std::string(isa().name()), mCore->loop.paths(), alwaysNotify() ? "YES" : "NO");
}
