// A drop folder that takes in what arrives: noticed, queued, compressed, digested, checked, and kept in a
// document bundle.

#include "examples/incoming/closing.h"
#include "examples/incoming/feeder.h"
#include "examples/incoming/intake.h"
#include "examples/incoming/options.h"
#include "examples/incoming/progress.h"

#include "LUMPlatform/NSRunLoop.h"
#include "LUMPlatform/NSThread.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kDefaultFeed = 240;
constexpr double kRefresh = 0.1; // seconds
constexpr int kInterrupted = 130; // as shells tell an end by Ctrl-C

/// The second process, which fills the drop folder.
class Feeder {
public:
    Feeder(const std::string& folder, std::size_t count)
    {
        std::string number = std::to_string(count);
        const char* words[] = { "incoming", "--feed", folder.c_str(), number.c_str(), nullptr };
        if (posix_spawn(&mProcess, "/proc/self/exe", nullptr, nullptr, const_cast<char**>(words), environ)
            != 0)
            mProcess = -1;
    }
    ~Feeder()
    {
        if (mProcess > 0)
            kill(mProcess, SIGTERM);
        end();
    }
    Feeder(const Feeder&) = delete;
    Feeder& operator=(const Feeder&) = delete;

    bool runs() const { return mProcess > 0; }
    /// Whether it ended, and by itself, with failure.
    bool failed()
    {
        int status = 0;
        if (mProcess <= 0 || waitpid(mProcess, &status, WNOHANG) != mProcess)
            return false;
        mProcess = 0;
        return status != 0;
    }

private:
    void end()
    {
        if (mProcess > 0)
            waitpid(mProcess, nullptr, 0);
    }
    pid_t mProcess = -1;
};

/// A folder of this run's own, gone with all that is in it at the end.
class ScratchFolder {
public:
    /// False, with errno, when the system makes none.
    bool make()
    {
        std::string made = (fs::temp_directory_path() / "incoming-XXXXXX").string();
        if (!mkdtemp(made.data()))
            return false;
        mPath = made;
        return true;
    }
    ScratchFolder() = default;
    ~ScratchFolder()
    {
        std::error_code ignored;
        if (!mPath.empty())
            fs::remove_all(mPath, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const fs::path& path() const { return mPath; }

private:
    fs::path mPath;
};

sigset_t interrupts()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

/// Ctrl-C and a request to terminate become a call on the main thread.
void callOnInterrupt(const std::function<void()>& call)
{
    const sigset_t signals = interrupts();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr); // before other threads begin: they inherit it
    std::thread([signals, call] {
        int signal = 0;
        while (sigwait(&signals, &signal) == 0)
            NSThread::performOnMainThread(call);
    }).detach();
}

int run(const Options& options)
{
    const bool feeds = options.folder.empty();
    const std::size_t count = options.count ? options.count : feeds ? kDefaultFeed : 0;
    ScratchFolder scratch;
    if (feeds && !scratch.make()) {
        std::perror("incoming: cannot make a folder");
        return 1;
    }
    const std::string folder = feeds ? (scratch.path() / "drop").string() : options.folder;
    const std::string into = options.into.empty() ? folder + "-done" : options.into;
    std::error_code problem;
    fs::create_directories(fs::path(into) / "originals", problem);
    if (problem) {
        std::fprintf(stderr, "incoming: cannot make %s: %s\n", into.c_str(), problem.message().c_str());
        return 1;
    }
    NSCoding::registerClass<FileRecord>();
    const IntakeBundle bundle(into + "/incoming.bundle");
    if (const std::string reason = bundle.open(); !reason.empty()) {
        std::fprintf(stderr, "incoming: cannot make %s: %s\n", bundle.path().c_str(), reason.c_str());
        return 1;
    }

    auto loop = NSRunLoop::main();
    bool interrupted = false;
    bool stopping = false;
    std::function<void()> stop;
    callOnInterrupt([&] {
        interrupted = true;
        stop();
    });

    Progress progress(isatty(STDOUT_FILENO) != 0);
    auto intake = Intake::intakeForFolder(folder, into + "/originals", bundle,
        options.jobs ? options.jobs : LUMJobQueue::numCores(), [&](const Receipt& receipt) {
            progress.fileEnded(receipt);
            if (count && progress.filesEnded() == count)
                stop();
        });
    if (!intake) {
        std::fprintf(stderr, "incoming: cannot watch %s\n", folder.c_str());
        return 1;
    }
    stop = [&] {
        if (!std::exchange(stopping, true))
            intake->stop([&] { loop->stop(); });
    };

    std::printf("taking in from %s, storing in %s\n", folder.c_str(), into.c_str());
    std::optional<Feeder> feeder;
    if (feeds && !feeder.emplace(folder, count).runs()) {
        std::fprintf(stderr, "incoming: cannot start the process that feeds the folder\n");
        return 1;
    }
    bool feedFailed = false;
    std::function<void()> tick = [&] {
        progress.refresh(intake->filesInWork(), intake->filesWaiting());
        if (feeder && feeder->failed()) {
            feedFailed = true;
            stop();
        }
        NSThread::performAfterDelay(kRefresh, tick);
    };
    tick();
    loop->run();
    intake->finish(); // so that it ends here, not on one of its own threads

    feeder.reset();
    progress.printTable();
    const bool isClosed = closeIntake(into, bundle, progress.receipts());
    if (interrupted)
        return kInterrupted;
    return progress.filesFailed() || feedFailed || !isClosed ? 1 : 0;
}

}

int main(int argc, char** argv)
{
    if (argc == 4 && std::string_view(argv[1]) == "--feed") {
        const sigset_t signals = interrupts(); // blocked by the process that started this one
        pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
        return feedFolder(argv[2], std::stoul(argv[3]));
    }
    std::string problem;
    auto options = parseOptions({ argv + 1, argv + argc }, problem);
    if (!options || options->help) {
        std::fprintf(
            options ? stdout : stderr, "%s%s%s", problem.c_str(), problem.empty() ? "" : "\n\n", kUsage);
        return options ? 0 : 2;
    }
    return run(*options);
}
