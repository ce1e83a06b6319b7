#pragma once

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

/// Gives the process a folder of its own for the user's data, which holds the trash. The desktop's library
/// reads the variable once in the life of a process, so include this in one source of a test program.
class DataHome : public testing::Environment {
public:
    void SetUp() override
    {
        std::string name =
            std::filesystem::canonical(std::filesystem::temp_directory_path()) / "lum-data-XXXXXX";
        folder = mkdtemp(name.data());
        setenv("XDG_DATA_HOME", folder.c_str(), 1);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    static inline std::filesystem::path folder;
};

[[maybe_unused]] static const auto* const dataHome = testing::AddGlobalTestEnvironment(new DataHome);
