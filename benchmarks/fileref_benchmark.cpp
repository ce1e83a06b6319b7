// Handles on files beside the bare system calls, and listings beside what others list with.
//
// Each row of ours makes the very calls that the bare row makes, fewer, or others that tell as much for less;
// what it takes beyond that is its own.

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSArray.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gio/gio.h>
#include <malloc.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr unsigned kIdentity = STATX_TYPE | STATX_INO | STATX_NLINK | STATX_SIZE | STATX_MTIME | STATX_BTIME;

/// A folder of so many files, for the length of the program.
class Folder {
public:
    explicit Folder(int files)
    {
        std::string made = (fs::temp_directory_path() / "fileref-XXXXXX").string();
        mPath = fs::canonical(mkdtemp(made.data())).string();
        for (int i = 0; i < files; ++i)
            std::ofstream(file(i));
    }
    ~Folder() { fs::remove_all(mPath); }

    const std::string& path() const { return mPath; }
    std::string file(int number) const { return mPath + "/Take " + std::to_string(number) + ".aif"; }

private:
    std::string mPath;
};

const Folder& small()
{
    static const Folder folder(100);
    return folder;
}

const Folder& large()
{
    static const Folder folder(100'000);
    return folder;
}

/// What a reference must ask the system about a new object.
int openAndIdentify(const char* path)
{
    const int descriptor = open(path, O_PATH | O_NOFOLLOW | O_CLOEXEC);
    struct statx found;
    statx(descriptor, "", AT_EMPTY_PATH | AT_SYMLINK_NOFOLLOW, kIdentity, &found);
    struct statfs volume;
    fstatfs(descriptor, &volume);
    alignas(file_handle) char handle[sizeof(file_handle) + MAX_HANDLE_SZ];
    auto* header = reinterpret_cast<file_handle*>(handle);
    header->handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    name_to_handle_at(descriptor, "", header, &mount, AT_EMPTY_PATH);
    benchmark::DoNotOptimize(
        found.stx_ino + static_cast<unsigned long>(volume.f_type) + header->handle_bytes);
    return descriptor;
}

void createOurs(benchmark::State& state)
{
    const NSRef<NSString> path = small().file(7);
    for (auto _ : state)
        benchmark::DoNotOptimize(LUMFileRef::fileRefWithPath(path));
}
BENCHMARK(createOurs)->Name("CreateReference/ours");

void createBare(benchmark::State& state)
{
    const std::string path = small().file(7);
    for (auto _ : state) {
        const int descriptor = openAndIdentify(path.c_str());
        struct stat info;
        fstat(descriptor, &info); // a number is closed only after a look
        close(descriptor);
    }
}
BENCHMARK(createBare)->Name("CreateReference/system_calls");

void pathOurs(benchmark::State& state)
{
    const auto fileRef = LUMFileRef::fileRefWithPath(small().file(7));
    for (auto _ : state)
        benchmark::DoNotOptimize(fileRef->path());
}
BENCHMARK(pathOurs)->Name("PathOfReference/ours");

void pathBare(benchmark::State& state)
{
    const int descriptor = openAndIdentify(small().file(7).c_str());
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    for (auto _ : state) {
        struct stat own, there;
        char text[PATH_MAX];
        fstat(descriptor, &own);
        const ssize_t length = readlink(link.c_str(), text, sizeof text - 1);
        text[length] = 0;
        lstat(text, &there);
        benchmark::DoNotOptimize(own.st_ino == there.st_ino);
    }
    close(descriptor);
}
BENCHMARK(pathBare)->Name("PathOfReference/system_calls");

/// Paths of references in turn, of which the process can hold a few open at a time.
void pathOfMany(benchmark::State& state)
{
    const auto folder = LUMFileRef::fileRefWithPath(large().path());
    const auto all = folder->childrenError();
    NSUInteger next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(all->objectAtIndex<LUMFileRef>(next)->path());
        next = (next + 7919) % all->count();
    }
}
BENCHMARK(pathOfMany)->Name("PathOfReference/ours_of_100000");

void compareOurs(benchmark::State& state)
{
    const auto a = LUMFileRef::fileRefWithPath(small().file(7));
    const auto b = LUMFileRef::fileRefWithPath(small().file(7));
    for (auto _ : state)
        benchmark::DoNotOptimize(a->compare(b));
}
BENCHMARK(compareOurs)->Name("CompareReferences/ours");

void compareBare(benchmark::State& state)
{
    const std::string a = small().file(7);
    for (auto _ : state) {
        struct stat first, second;
        stat(a.c_str(), &first);
        stat(a.c_str(), &second);
        benchmark::DoNotOptimize(first.st_ino == second.st_ino && first.st_dev == second.st_dev);
    }
}
BENCHMARK(compareBare)->Name("CompareReferences/system_calls");

/// Bytes a handle takes, all that hangs on it included.
void sizeOfHandle(benchmark::State& state)
{
    constexpr std::size_t kCount = 1000;
    const std::string path = small().file(7);
    double bytes = 0;
    for (auto _ : state) {
        std::vector<NSRef<LUMFileRef>> all;
        all.reserve(kCount);
        const std::size_t before = mallinfo2().uordblks;
        for (std::size_t i = 0; i < kCount; ++i)
            all.push_back(LUMFileRef::fileRefWithPath(path));
        bytes = static_cast<double>(mallinfo2().uordblks - before) / kCount;
    }
    state.counters["bytes_each"] = bytes;
}
BENCHMARK(sizeOfHandle)->Name("MemoryOfReferences/ours/1000");

void listOurs(benchmark::State& state)
{
    const auto folder = LUMFileRef::fileRefWithPath(large().path());
    for (auto _ : state)
        benchmark::DoNotOptimize(folder->childrenError());
}
BENCHMARK(listOurs)->Name("ListFolder/ours/100000")->Unit(benchmark::kMillisecond);

void listBare(benchmark::State& state)
{
    std::vector<char> buffer(64 * 1024);
    for (auto _ : state) {
        const int folder = open(large().path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        for (;;) {
            const long length = syscall(SYS_getdents64, folder, buffer.data(), buffer.size());
            if (length <= 0)
                break;
            for (long at = 0; at < length;) {
                const char* entry = buffer.data() + at;
                struct statx found;
                statx(folder, entry + 19, AT_SYMLINK_NOFOLLOW, kIdentity, &found);
                benchmark::DoNotOptimize(found.stx_ino);
                std::uint16_t size;
                std::memcpy(&size, entry + 16, sizeof size);
                at += size;
            }
        }
        close(folder);
    }
}
BENCHMARK(listBare)->Name("ListFolder/getdents64_and_statx/100000")->Unit(benchmark::kMillisecond);

void listStandard(benchmark::State& state)
{
    for (auto _ : state) {
        std::vector<std::pair<fs::path, ino_t>> all;
        for (const auto& entry : fs::directory_iterator(large().path())) {
            struct stat info;
            lstat(entry.path().c_str(), &info);
            all.emplace_back(entry.path(), info.st_ino);
        }
        benchmark::DoNotOptimize(all.data());
    }
}
BENCHMARK(listStandard)->Name("ListFolder/std_filesystem_and_lstat/100000")->Unit(benchmark::kMillisecond);

void listGio(benchmark::State& state)
{
    for (auto _ : state) {
        GFile* const folder = g_file_new_for_path(large().path().c_str());
        GFileEnumerator* const entries = g_file_enumerate_children(
            folder, "standard::*", G_FILE_QUERY_INFO_NOFOLLOW_SYMLINKS, nullptr, nullptr);
        while (GFileInfo* const info = g_file_enumerator_next_file(entries, nullptr, nullptr)) {
            GFile* const child = g_file_enumerator_get_child(entries, info);
            benchmark::DoNotOptimize(child);
            g_object_unref(child);
            g_object_unref(info);
        }
        g_object_unref(entries);
        g_object_unref(folder);
    }
}
BENCHMARK(listGio)->Name("ListFolder/gio/100000")->Unit(benchmark::kMillisecond);

}
