#pragma once

#include "LUMPlatform/FSRef.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

#include <filesystem>
#include <fstream>
#include <iterator>

/// A folder of its own on some file system, and references to what is in it.
class ReferenceTest : public ObjectTest {
protected:
    ReferenceTest() { useFolderIn(std::filesystem::temp_directory_path()); }
    ~ReferenceTest() override
    {
        std::error_code error;
        std::filesystem::remove_all(mFolder, error);
    }

    void useFolderIn(const std::filesystem::path& place)
    {
        std::error_code error;
        if (!mFolder.empty())
            std::filesystem::remove_all(mFolder, error);
        std::string made = (std::filesystem::canonical(place) / "reference-XXXXXX").string();
        ASSERT_NE(mkdtemp(made.data()), nullptr);
        mFolder = made;
    }

    std::string at(const std::string& name) const { return (mFolder / name).string(); }
    std::string file(const std::string& name, const std::string& text = "text") const
    {
        std::ofstream(at(name)) << text;
        return at(name);
    }
    std::string folder(const std::string& name) const
    {
        std::filesystem::create_directories(at(name));
        return at(name);
    }
    void rename(const std::string& from, const std::string& to) const
    {
        std::filesystem::rename(at(from), at(to));
    }
    void remove(const std::string& name) const { std::filesystem::remove_all(at(name)); }

    static FSRef refTo(const std::string& path)
    {
        FSRef ref;
        EXPECT_EQ(FSPathMakeRef(path, ref), 0) << path;
        return ref;
    }
    /// The path of a reference, or its status in brackets.
    static std::string pathOf(const FSRef& ref)
    {
        std::string path;
        const OSStatus status = FSRefMakePath(ref, path);
        return status == 0 ? path : "(" + std::to_string(status) + ")";
    }
    /// The reference without its descriptor, as if others had used the pool up.
    static FSRef letGo(const FSRef& ref)
    {
        FSReleaseDescriptors();
        return ref;
    }
    static std::size_t openDescriptors()
    {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    std::filesystem::path mFolder;
};
