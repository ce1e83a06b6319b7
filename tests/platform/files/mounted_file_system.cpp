#include "tests/platform/files/mounted_file_system.h"

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

bool mountOverlay(const fs::path& scratch, const fs::path& top)
{
    const fs::path upper = scratch / "memory";
    fs::create_directories(scratch / "lower");
    fs::create_directories(upper);
    if (mount("none", upper.c_str(), "tmpfs", 0, nullptr) != 0)
        return false;
    fs::create_directories(upper / "upper");
    fs::create_directories(upper / "work");
    const std::string options = "lowerdir=" + (scratch / "lower").string()
        + ",upperdir=" + (upper / "upper").string() + ",workdir=" + (upper / "work").string();
    return mount("none", top.c_str(), "overlay", 0, options.c_str()) == 0;
}

bool mountImage(const std::string& type, const fs::path& scratch, const fs::path& top)
{
    const fs::path image = scratch / "image";
    std::ofstream(image).put('\0');
    fs::resize_file(image, 400u << 20);
    return run("mkfs." + type + " " + image.string())
        && run("mount -o loop " + image.string() + " " + top.string());
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
    system->mIsMounted =
        type == "overlay" ? mountOverlay(scratch, system->mTop) : mountImage(type, scratch, system->mTop);
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
    umount2((mScratch / "memory").c_str(), MNT_DETACH);
    std::error_code error;
    fs::remove_all(mScratch, error);
}

bool MountedFileSystem::unmount()
{
    const bool isGone = mIsMounted && umount2(mTop.c_str(), 0) == 0;
    mIsMounted = mIsMounted && !isGone;
    return isGone;
}
