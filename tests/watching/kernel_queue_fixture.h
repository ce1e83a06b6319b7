#pragma once

#include "tests/temporary_folder.h"
#include "tests/watching/change_names.h"
#include "watching/kernel_queue.h"

#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <unistd.h>

namespace lum {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

/// Real files, on the file system of temporary files and on the one in memory.
class KernelQueueTest : public testing::TestWithParam<std::string> {
public:
    using Token = KernelQueue::Token;

    void SetUp() override
    {
        const std::string parent =
            GetParam() == "Temporary" ? fs::temp_directory_path().string() : "/dev/shm";
        if (access(parent.c_str(), W_OK) != 0)
            GTEST_SKIP() << "no folder " << parent;
        folder.emplace(parent);
        queue = KernelQueue::open();
        ASSERT_TRUE(queue);
        writeFile(*folder / "end", "");
        mEnd = add("end", kVnodeWrite);
        writeFile(*folder / "file", "0123456789");
    }

    std::string path(std::string_view name) const { return *folder / name; }

    Token add(const std::string& name, std::uint32_t changes = kEveryChange)
    {
        EXPECT_TRUE(queue->add(++mLastToken, name.starts_with('/') ? name : path(name), changes)) << name;
        return mLastToken;
    }

    /// Adds "above/file", and renames the folder to "moved".
    Token addBelowAFolderThatMoves()
    {
        fs::create_directory(path("above"));
        writeFile(path("above/file"), "");
        const Token token = add("above/file");
        fs::rename(path("above"), path("moved"));
        return token;
    }

    /// What has been reported up to now, as in "file:WRITE EXTEND": one list for each wait and path.
    std::string report(const std::map<Token, std::string>& names)
    {
        // Events come in order, so nothing can follow the news of a last write of our own.
        std::ofstream(path("end"), std::ios::app) << '.';
        std::string text;
        const auto deadline = std::chrono::steady_clock::now() + 20s;
        for (bool hasEnded = false; !hasEnded && std::chrono::steady_clock::now() < deadline;) {
            for (const KernelQueue::Event& event : queue->wait(1s)) {
                hasEnded |= event.token == mEnd;
                if (names.count(event.token))
                    text += (text.empty() ? "" : " ") + names.at(event.token) + changeNames(event.changes);
            }
        }
        return text;
    }
    std::string report(Token token) { return report({ { token, "" } }); }

    std::optional<TemporaryFolder> folder;
    std::unique_ptr<KernelQueue> queue;

private:
    Token mLastToken = 0;
    Token mEnd = 0;
};

/// The rows of the parameter.
inline auto bothFileSystems()
{
    return testing::Values("Temporary", "Memory");
}
inline std::string fileSystemName(const testing::TestParamInfo<std::string>& row)
{
    return row.param;
}

}
