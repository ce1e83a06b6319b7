#pragma once

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

/// The example program as a process, with its output in a file.
class IncomingProcess {
public:
    IncomingProcess(const char* program, std::vector<std::string> words, const std::string& output)
    {
        words.insert(words.begin(), "incoming");
        std::vector<char*> pointers;
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_addopen(&files, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_adddup2(&files, 1, 2);
        if (posix_spawn(&mProcess, program, &files, nullptr, pointers.data(), environ) != 0)
            mProcess = 0;
        posix_spawn_file_actions_destroy(&files);
    }
    ~IncomingProcess()
    {
        signal(SIGKILL);
        (void)statusWithin(std::chrono::seconds(30));
    }
    IncomingProcess(const IncomingProcess&) = delete;
    IncomingProcess& operator=(const IncomingProcess&) = delete;

    void signal(int number)
    {
        if (mProcess > 0)
            kill(mProcess, number);
    }

    /// The exit status, 128 + the signal for one that was killed; null when it still runs at the deadline.
    std::optional<int> statusWithin(std::chrono::seconds limit)
    {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (mProcess > 0 && std::chrono::steady_clock::now() < deadline) {
            int status = 0;
            if (waitpid(mProcess, &status, WNOHANG) == mProcess) {
                mProcess = 0;
                mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            } else
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return mStatus;
    }

private:
    pid_t mProcess = 0;
    std::optional<int> mStatus;
};
