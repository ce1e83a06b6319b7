#pragma once

#include "tests/temporary_folder.h"

#include <gtest/gtest.h>
#include <memory>

/// Gives the process a folder of its own for the user's data, which holds the trash. The desktop's library
/// reads the variable once in the life of a process, so include this in one source of a test program.
class DataHome : public testing::Environment {
public:
    void SetUp() override
    {
        mFolder = std::make_unique<TemporaryFolder>();
        folder = mFolder->path();
        setenv("XDG_DATA_HOME", folder.c_str(), 1);
    }
    void TearDown() override { mFolder.reset(); }

    static inline std::filesystem::path folder;

private:
    std::unique_ptr<TemporaryFolder> mFolder;
};

[[maybe_unused]] static const auto* const dataHome = testing::AddGlobalTestEnvironment(new DataHome);
