#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

/// Lets "~" be a folder of a test's own while it lives.
class HomeFolder {
public:
    explicit HomeFolder(const std::filesystem::path& folder)
    {
        if (const char* before = std::getenv("HOME"))
            mBefore = before;
        setenv("HOME", folder.c_str(), 1);
    }
    ~HomeFolder() { mBefore.empty() ? unsetenv("HOME") : setenv("HOME", mBefore.c_str(), 1); }
    HomeFolder(const HomeFolder&) = delete;
    HomeFolder& operator=(const HomeFolder&) = delete;

private:
    std::string mBefore;
};
