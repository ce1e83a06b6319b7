#pragma once

#include "tests/watching/inotify_bytes.h"
#include "watching/inotify_system.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <string>
#include <utility>

namespace lum {

/// An inotify without files: paths and events are what the test says, and any call can be made to fail.
class FakeInotify : public InotifySystem {
public:
    static constexpr std::uint32_t kFile = 0100644;
    static constexpr std::uint32_t kFolder = 0040755;

    /// Lets `path` name a new object, which gets the next inode and watch number.
    void make(const std::string& path, std::uint32_t mode = kFile)
    {
        FileStatus status;
        status.device = 1;
        status.inode = ++mLastInode;
        status.mode = mode;
        status.links = 1;
        files[path] = status;
    }
    void send(int watch, std::uint32_t flags, std::string_view name = {}, std::uint32_t cookie = 0)
    {
        pending = pending + inotifyBytes(watch, flags, name, cookie);
    }
    /// The calls since the last take().
    std::string take() { return std::exchange(mCalls, {}); }

    std::map<std::string, FileStatus> files;
    std::map<std::string, int> failures; ///< Call name to the errno value it fails with.
    std::vector<std::byte> pending;
    std::map<int, std::uint32_t> watches;
    bool tellsLiveWatches = true;
    int openDescriptors = 0;
    int wakes = 0;
    int looks = 0; ///< How often a status was asked for.

    int openQueue() override { return openAs("openQueue", kQueueNumber); }
    int openWaker() override { return openAs("openWaker", kWakerNumber); }
    int openPath(const std::string& path, bool&) override
    {
        if (!files.count(withoutSlash(path)))
            return -ENOENT;
        const int number = openAs("openPath", kPathNumber + static_cast<int>(mOpenPaths.size()));
        if (number >= 0)
            mOpenPaths.push_back(withoutSlash(path));
        return number;
    }
    int close(int descriptor) override
    {
        --openDescriptors;
        return descriptor == kQueueNumber ? -failure("close") : 0;
    }

    int addWatch(int, const std::string& path, std::uint32_t events) override
    {
        const std::string descriptors = "/proc/self/fd/";
        const bool isDescriptor = path.starts_with(descriptors);
        const std::string name =
            isDescriptor ? openedAs(std::stoi(path.substr(descriptors.size()))) : withoutSlash(path);
        if (isDescriptor && failures.count("proc"))
            return -failure("proc");
        const int error = failure(isDescriptor ? "addWatch" : "addWatchByPath");
        if (error || !files.count(name))
            return error ? -error : -ENOENT;
        const int watch = static_cast<int>(files[name].inode);
        watches[watch] |= events & ~inotify::kMaskAdd;
        mCalls += "add(" + name + ") ";
        return watch;
    }
    int removeWatch(int, int watch) override
    {
        mCalls += "remove(" + std::to_string(watch) + ") ";
        if (const int error = failure("removeWatch"))
            return -error;
        return watches.erase(watch) ? 0 : -EINVAL;
    }
    std::optional<std::vector<int>> liveWatches(int) override
    {
        if (!tellsLiveWatches)
            return std::nullopt;
        std::vector<int> numbers;
        for (const auto& [number, events] : watches)
            numbers.push_back(number);
        return numbers;
    }

    std::string pathOf(int number) override { return failures.count("proc") ? "" : openedAs(number); }
    int status(int number, FileStatus& found) override { return status(openedAs(number), found); }
    int status(const std::string& path, FileStatus& found) override
    {
        if (const int error = failure("status"))
            return -error;
        ++looks;
        const auto file = files.find(path);
        if (file == files.end())
            return -ENOENT;
        found = file->second;
        return 0;
    }

    int wait(int, int, std::chrono::milliseconds limit) override
    {
        lastLimit = limit;
        if (const int error = failure("wait"))
            return -error;
        return (pending.empty() ? kNothing : kQueue) | (wakes ? kWaker : kNothing);
    }
    std::ptrdiff_t read(int, std::span<std::byte> buffer) override
    {
        if (const int error = failure("read"))
            return -error;
        // As the kernel does, as many whole events as there is room for.
        std::size_t length = 0;
        while (length < pending.size()) {
            std::uint32_t nameLength;
            std::memcpy(&nameLength, &pending[length + 12], 4);
            if (length + 16 + nameLength > buffer.size())
                break;
            length += 16 + nameLength;
        }
        std::copy_n(pending.begin(), length, buffer.begin());
        pending.erase(pending.begin(), pending.begin() + static_cast<std::ptrdiff_t>(length));
        return static_cast<std::ptrdiff_t>(length);
    }
    void wake(int) override { ++wakes; }
    void rearm(int) override { wakes = 0; }

    std::chrono::milliseconds lastLimit {};

private:
    enum Numbers { kQueueNumber = 100, kWakerNumber, kPathNumber };

    static std::string withoutSlash(std::string path)
    {
        if (path.size() > 1 && path.back() == '/')
            path.pop_back();
        return path;
    }
    const std::string& openedAs(int number) const
    {
        return mOpenPaths.at(static_cast<std::size_t>(number - kPathNumber));
    }
    int failure(const char* call) const
    {
        const auto found = failures.find(call);
        return found == failures.end() ? 0 : found->second;
    }
    int openAs(const char* call, int number)
    {
        if (const int error = failure(call))
            return -error;
        ++openDescriptors;
        return number;
    }

    std::uint64_t mLastInode = 0;
    std::vector<std::string> mOpenPaths; // by number, from kPathNumber on; never taken back
    std::string mCalls;
};

}
