#pragma once

#include <filesystem>
#include <memory>
#include <string>

/// A file system of some type for the length of a test, in a mount namespace of the test's own.
class MountedFileSystem {
public:
    /// `type`: "temporary" and "memory" are always there; "overlay", "ext4", "xfs" and "btrfs" are mounted,
    /// which takes root, a loop device and the program that makes them. Nothing when that is not to be had.
    ///
    /// An overlay has the files "below/f" and "below/folder/f" in its lower layer. The upper one is in
    /// memory; of "overlay_on_ext4", "overlay_on_btrfs" and so on both are on a file system of that type.
    static std::unique_ptr<MountedFileSystem> find(const std::string& type);

    MountedFileSystem(const MountedFileSystem&) = delete;
    MountedFileSystem& operator=(const MountedFileSystem&) = delete;
    ~MountedFileSystem();

    const std::filesystem::path& top() const { return mTop; }
    /// Takes it away as a user would; whether that was possible.
    bool unmount();

private:
    MountedFileSystem(std::filesystem::path top, std::filesystem::path scratch);

    const std::filesystem::path mTop;
    const std::filesystem::path mScratch; // empty for what was not mounted here
    bool mIsMounted = false;
};
