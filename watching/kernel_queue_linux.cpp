#include "watching/inotify_queue.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <linux/openat2.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lum {

static_assert(inotify::kModify == IN_MODIFY && inotify::kAttrib == IN_ATTRIB
    && inotify::kMovedFrom == IN_MOVED_FROM && inotify::kMovedTo == IN_MOVED_TO
    && inotify::kCreate == IN_CREATE && inotify::kDelete == IN_DELETE
    && inotify::kDeleteSelf == IN_DELETE_SELF && inotify::kMoveSelf == IN_MOVE_SELF
    && inotify::kUnmount == IN_UNMOUNT && inotify::kOverflow == IN_Q_OVERFLOW
    && inotify::kIgnored == IN_IGNORED && inotify::kOnlyFolder == IN_ONLYDIR
    && inotify::kMaskAdd == IN_MASK_ADD && inotify::kIsFolder == IN_ISDIR);
static_assert(sizeof(inotify_event) == 16);

namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;

// File times advance with the kernel's tick, which is never longer than this.
constexpr std::int64_t kRecent = 20'000'000;

std::int64_t nanoseconds(const timespec& time)
{
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

int resultOf(int result)
{
    return result < 0 ? -errno : result;
}

FileStatus statusOf(const struct stat& info)
{
    FileStatus status;
    status.device = info.st_dev;
    status.inode = info.st_ino;
    status.size = static_cast<std::uint64_t>(info.st_size);
    status.modified = nanoseconds(info.st_mtim);
    status.changed = nanoseconds(info.st_ctim);
    status.links = static_cast<std::uint32_t>(info.st_nlink);
    status.mode = info.st_mode;
    status.user = info.st_uid;
    status.group = info.st_gid;
    timespec now {};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    status.isRecent = nanoseconds(now) - status.changed < kRecent;
    return status;
}

class RunningSystem final : public InotifySystem {
public:
    int openQueue() override { return resultOf(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)); }
    int openWaker() override { return resultOf(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)); }
    int openPath(const std::string& path, bool& isReal) override;
    int close(int descriptor) override { return resultOf(::close(descriptor)); }

    int addWatch(int queue, const std::string& path, std::uint32_t events) override
    {
        return resultOf(inotify_add_watch(queue, path.c_str(), events));
    }
    int removeWatch(int queue, int watch) override { return resultOf(inotify_rm_watch(queue, watch)); }
    std::optional<std::vector<int>> liveWatches(int queue) override;

    std::string pathOf(int descriptor) override;
    int status(int descriptor, FileStatus& status) override
    {
        struct stat info;
        const int result = resultOf(fstat(descriptor, &info));
        if (result == 0)
            status = statusOf(info);
        return result;
    }
    int status(const std::string& path, FileStatus& status) override
    {
        struct stat info;
        const int result = resultOf(stat(path.c_str(), &info));
        if (result == 0)
            status = statusOf(info);
        return result;
    }

    int wait(int queue, int waker, std::chrono::milliseconds limit) override;
    std::ptrdiff_t read(int queue, std::span<std::byte> buffer) override
    {
        const ssize_t length = ::read(queue, buffer.data(), buffer.size());
        return length < 0 ? -errno : length;
    }
    void wake(int waker) override { eventfd_write(waker, 1); }
    void rearm(int waker) override
    {
        eventfd_t count;
        eventfd_read(waker, &count);
    }
};

int RunningSystem::openPath(const std::string& path, bool& isReal)
{
    // Without links on the way, and in its shortest form, a path is its own real path. Older kernels do not
    // know this call, and some sandboxes forbid it.
    const bool isShort = path.starts_with('/') && !path.ends_with('/') && path.find("//") == std::string::npos
        && path.find("/.") == std::string::npos;
    if (isShort) {
        open_how how {};
        how.flags = O_PATH | O_CLOEXEC;
        how.resolve = RESOLVE_NO_SYMLINKS;
        const long descriptor = syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof(how));
        isReal = descriptor >= 0;
        if (isReal)
            return static_cast<int>(descriptor);
    }
    return resultOf(::open(path.c_str(), O_PATH | O_CLOEXEC));
}

std::optional<std::vector<int>> RunningSystem::liveWatches(int queue)
{
    const std::string path = "/proc/self/fdinfo/" + std::to_string(queue);
    const int info = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (info < 0)
        return std::nullopt;
    const struct Closing {
        int descriptor;
        ~Closing() { ::close(descriptor); }
    } closing { info };
    std::string text;
    char piece[16 * 1024];
    ssize_t length = 0;
    while ((length = ::read(info, piece, sizeof(piece))) > 0)
        text.append(piece, static_cast<std::size_t>(length));
    if (length < 0)
        return std::nullopt;
    return decodeInotifyWatches(text);
}

std::string RunningSystem::pathOf(int descriptor)
{
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    char path[4096];
    const ssize_t length = readlink(link.c_str(), path, sizeof(path));
    if (length <= 0 || static_cast<std::size_t>(length) == sizeof(path) || path[0] != '/')
        return {};
    return std::string(path, static_cast<std::size_t>(length));
}

int RunningSystem::wait(int queue, int waker, std::chrono::milliseconds limit)
{
    pollfd descriptors[] = { { queue, POLLIN, 0 }, { waker, POLLIN, 0 } };
    const int count = resultOf(poll(descriptors, 2, static_cast<int>(limit.count())));
    if (count < 0)
        return count == -EINTR ? kNothing : count;
    int ready = kNothing;
    if (descriptors[0].revents & (POLLERR | POLLNVAL))
        return -EBADF;
    if (descriptors[0].revents & POLLIN)
        ready |= kQueue;
    if (descriptors[1].revents & POLLIN)
        ready |= kWaker;
    return ready;
}

}

InotifySystem& InotifySystem::running()
{
    // Never destroyed: watcher threads may outlive the end of main.
    static RunningSystem* const system = new RunningSystem;
    return *system;
}

std::unique_ptr<KernelQueue> KernelQueue::open()
{
    return InotifyQueue::open(InotifySystem::running());
}

}
