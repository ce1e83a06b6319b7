#pragma once

#include "tests/fixture.h"
#include "tests/temporary_folder.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

/// A folder of a test's own and what tests of trees do in it.
class TreeTest : public ObjectTest {
protected:
    std::string path(const std::string& name) const { return folder / name; }
    void put(const std::string& name, const std::string& text = "content") const
    {
        std::ofstream(folder / name) << text;
    }
    std::string get(const std::string& name) const { return readFile(folder / name); }
    void makeFolder(const std::string& name) const { std::filesystem::create_directories(folder / name); }
    static mode_t modeOf(const std::string& at)
    {
        struct stat status = {};
        return lstat(at.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    /// All that is in the folder `name`, one path a line, with contents and targets.
    std::string tree(const std::string& name) const
    {
        std::vector<std::string> lines;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / name)) {
            const auto relative = entry.path().lexically_relative(folder / name).string();
            if (entry.is_symlink())
                lines.push_back(relative + " -> " + std::filesystem::read_symlink(entry.path()).string());
            else if (entry.is_directory())
                lines.push_back(relative + "/");
            else if (entry.is_regular_file())
                lines.push_back(relative + " = " + get(name + "/" + relative));
            else
                lines.push_back(relative + " ?");
        }
        std::sort(lines.begin(), lines.end());
        std::string text;
        for (const auto& line : lines)
            text += line + "\n";
        return text;
    }
    /// The names in the test's folder, hidden ones too.
    std::string names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            found.push_back(entry.path().filename());
        std::sort(found.begin(), found.end());
        std::string text;
        for (const auto& name : found)
            text += (text.empty() ? "" : " ") + name;
        return text;
    }
    /// "folder/sub/link -> ../out" and so on: some of everything.
    void putSome(const std::string& name) const
    {
        makeFolder(name + "/sub/empty");
        put(name + "/a", "text of a");
        put(name + "/sub/b", "");
        std::filesystem::create_symlink("../../outside", folder / name / "sub/link");
    }
    /// Folders of this name one in the other, so that 21 are deeper than any path can tell.
    static inline const std::string kDeepName = std::string(200, 'd');
    void putDeep(const std::string& name, int depth) const
    {
        makeFolder(name);
        int at = open(path(name).c_str(), O_RDONLY | O_DIRECTORY);
        for (int i = 0; i < depth; ++i) {
            ASSERT_EQ(mkdirat(at, kDeepName.c_str(), 0755), 0);
            const int below = openat(at, kDeepName.c_str(), O_RDONLY | O_DIRECTORY);
            ASSERT_GE(below, 0);
            close(at);
            at = below;
        }
        close(at);
    }
    int depthOf(const std::string& name) const
    {
        int depth = 0;
        int at = open(path(name).c_str(), O_RDONLY | O_DIRECTORY);
        for (int below; (below = openat(at, kDeepName.c_str(), O_RDONLY | O_DIRECTORY)) >= 0; at = below) {
            close(at);
            ++depth;
        }
        close(at);
        return depth;
    }

private:
    const TemporaryFolder mFolder;

protected:
    const std::filesystem::path folder = mFolder.path();
};
