#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/stat.h>

/// A new folder of a test's own, removed with all it holds at the end. Symbolic links above it are resolved.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
    {
        std::string name = std::filesystem::canonical(parent) / "lum-test-XXXXXX";
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary folder");
        mPath = name;
        chmod(name.c_str(), 0755);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return mPath; }
    std::string operator/(std::string_view name) const { return mPath / name; }

private:
    std::filesystem::path mPath;
};

/// All that is in a file; empty when there is none.
inline std::string readFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>() };
}

inline void writeFile(const std::string& path, std::string_view text)
{
    std::ofstream(path, std::ios::trunc) << text;
}

inline void appendToFile(const std::string& path, std::string_view text)
{
    std::ofstream(path, std::ios::app) << text;
}
