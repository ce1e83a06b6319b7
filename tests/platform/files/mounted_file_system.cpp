#include "tests/platform/files/mounted_file_system.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

bool haveOwnNamespace()
{
    static const bool have = geteuid() == 0 && unshare(CLONE_NEWNS) == 0
        && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return have;
}

bool run(const std::string& command)
{
    return std::system(("PATH=$PATH:/usr/sbin:/sbin; " + command + " >/dev/null 2>&1").c_str()) == 0;
}

bool mountImage(const std::string& type, const fs::path& scratch, const fs::path& top)
{
    const fs::path image = scratch / "image";
    std::ofstream(image).put('\0');
    fs::resize_file(image, 400u << 20);
    return run("mkfs." + type + " " + image.string())
        && run("mount -o loop " + image.string() + " " + top.string());
}

/// The upper layer is in memory, or both are on a file system of the type.
bool mountOverlay(const std::string& type, const fs::path& scratch, const fs::path& top)
{
    const fs::path layers = scratch / "layers";
    fs::create_directories(layers);
    const bool isMounted = type.empty() ? mount("none", layers.c_str(), "tmpfs", 0, nullptr) == 0
                                        : mountImage(type, scratch, layers);
    if (!isMounted)
        return false;
    const fs::path lower = (type.empty() ? scratch : layers) / "lower";
    fs::create_directories(lower / "below/folder");
    for (const char* file : { "below/f", "below/folder/f" })
        std::ofstream(lower / file) << "text";
    fs::create_directories(layers / "upper");
    fs::create_directories(layers / "work");
    const std::string options = "lowerdir=" + lower.string() + ",upperdir=" + (layers / "upper").string()
        + ",workdir=" + (layers / "work").string();
    return mount("none", top.c_str(), "overlay", 0, options.c_str()) == 0;
}

}

std::unique_ptr<MountedFileSystem> MountedFileSystem::find(const std::string& type)
{
    const auto with = [](const fs::path& top, const fs::path& scratch) {
        return std::unique_ptr<MountedFileSystem>(new MountedFileSystem(top, scratch));
    };
    if (type == "temporary")
        return with(fs::temp_directory_path(), {});
    if (type == "memory")
        return fs::exists("/dev/shm") ? with("/dev/shm", {}) : nullptr;
    if (!haveOwnNamespace())
        return nullptr;
    std::string made = (fs::canonical(fs::temp_directory_path()) / "mounted-XXXXXX").string();
    if (!mkdtemp(made.data()))
        return nullptr;
    const fs::path scratch = made;
    auto system = with(scratch / "top", scratch);
    fs::create_directories(system->mTop);
    constexpr std::string_view kOverlayOn = "overlay_on_";
    if (type == "overlay" || type.starts_with(kOverlayOn))
        system->mIsMounted =
            mountOverlay(type.substr(std::min(type.size(), kOverlayOn.size())), scratch, system->mTop);
    else
        system->mIsMounted = mountImage(type, scratch, system->mTop);
    return system->mIsMounted ? std::move(system) : nullptr;
}

MountedFileSystem::MountedFileSystem(fs::path top, fs::path scratch)
    : mTop(std::move(top)), mScratch(std::move(scratch))
{
}

MountedFileSystem::~MountedFileSystem()
{
    if (mScratch.empty())
        return;
    if (mIsMounted)
        umount2(mTop.c_str(), MNT_DETACH);
    umount2((mScratch / "layers").c_str(), MNT_DETACH);
    std::error_code error;
    fs::remove_all(mScratch, error);
}

bool MountedFileSystem::unmount()
{
    const bool isGone = mIsMounted && umount2(mTop.c_str(), 0) == 0;
    mIsMounted = mIsMounted && !isGone;
    return isGone;
}
