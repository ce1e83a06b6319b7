#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A bundle in a folder of its own, removed at the end.
class Bundle {
public:
    Bundle()
    {
        std::string made = (fs::temp_directory_path() / "document-benchmark-XXXXXX").string();
        folder = mkdtemp(made.data());
        bundle = LUMDocumentBundle::documentBundleWithPath(folder.string(), true);
    }
    ~Bundle() { fs::remove_all(folder); }
    Bundle(const Bundle&) = delete;
    Bundle& operator=(const Bundle&) = delete;

    void fill(std::int64_t objects) const
    {
        (void)bundle->pathForObjectWithKey("0", nullptr, true);
        for (std::int64_t number = 0; number < objects; ++number)
            fs::copy_file(sample(), folder / "Contents/Objects" / (std::to_string(number) + ".object"));
    }
    fs::path sample() const
    {
        const fs::path path = folder / "sample.object";
        if (!fs::exists(path) && bundle->saveObject(object(), "sample"))
            fs::rename(folder / "Contents/Objects/sample.object", path);
        return path;
    }
    static NSId object() { return NSDictionary::of({ { "Title", "Take 1" }, { "Seconds", 12.5 } }); }

    fs::path folder;
    NSRef<LUMDocumentBundle> bundle;
};

/// The number is that of the objects already there.
void saveObject(benchmark::State& state)
{
    const Bundle bundle;
    bundle.fill(state.range());
    const NSId object = Bundle::object();
    for (auto _ : state)
        benchmark::DoNotOptimize(bundle.bundle->saveObject(object, "new"));
}
BENCHMARK(saveObject)->Name("BundleSaveObject/ours")->Arg(10)->Arg(10'000)->UseRealTime();

/// The bytes alone, written as safely.
void saveBytes(benchmark::State& state)
{
    const Bundle bundle;
    bundle.fill(state.range());
    std::string bytes(fs::file_size(bundle.sample()), 'x');
    const fs::path path = bundle.folder / "Contents/Objects/new.object";
    const fs::path hidden = bundle.folder / "Contents/Objects/.new";
    for (auto _ : state) {
        const int file = open(hidden.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        benchmark::DoNotOptimize(write(file, bytes.data(), bytes.size()));
        fsync(file);
        close(file);
        fs::rename(hidden, path);
        const int folder = open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        fsync(folder);
        close(folder);
    }
}
BENCHMARK(saveBytes)->Name("BundleSaveObject/bare_calls")->Arg(10)->Arg(10'000)->UseRealTime();

void decodeObject(benchmark::State& state)
{
    const Bundle bundle;
    bundle.fill(state.range());
    for (auto _ : state)
        benchmark::DoNotOptimize(bundle.bundle->decodeObjectWithKey("5"));
}
BENCHMARK(decodeObject)->Name("BundleDecodeObject/ours")->Arg(10)->Arg(10'000);

void readBytes(benchmark::State& state)
{
    const Bundle bundle;
    bundle.fill(state.range());
    const fs::path path = bundle.folder / "Contents/Objects/5.object";
    char bytes[4096];
    for (auto _ : state) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        benchmark::DoNotOptimize(read(file, bytes, sizeof bytes));
        close(file);
    }
}
BENCHMARK(readBytes)->Name("BundleDecodeObject/bare_calls")->Arg(10)->Arg(10'000);

void makeDomains(const fs::path& folder, std::int64_t count)
{
    fs::create_directory(folder / "Contents");
    for (std::int64_t number = 0; number < count; ++number) {
        const fs::path path = folder / "Contents" / ("domain" + std::to_string(number));
        if (number % 2 == 0)
            fs::create_directory(path);
        else
            std::ofstream(path.string() + ".plist") << "{}";
    }
}

void presentDomains(benchmark::State& state)
{
    const Bundle bundle;
    makeDomains(bundle.folder, state.range());
    for (auto _ : state)
        benchmark::DoNotOptimize(bundle.bundle->presentDomains());
}
BENCHMARK(presentDomains)->Name("BundlePresentDomains/ours")->Arg(1000)->Unit(benchmark::kMicrosecond);

/// The same set of names by the C++ library.
void listByLibrary(benchmark::State& state)
{
    const Bundle bundle;
    makeDomains(bundle.folder, state.range());
    for (auto _ : state) {
        std::set<std::string> domains;
        for (const auto& entry : fs::directory_iterator(bundle.folder / "Contents")) {
            struct stat status;
            if (lstat(entry.path().c_str(), &status) != 0)
                continue;
            if (S_ISDIR(status.st_mode))
                domains.insert(entry.path().filename());
            else if (entry.path().extension() == ".plist")
                domains.insert(entry.path().stem());
        }
        benchmark::DoNotOptimize(domains);
    }
}
BENCHMARK(listByLibrary)
    ->Name("BundlePresentDomains/std_filesystem")
    ->Arg(1000)
    ->Unit(benchmark::kMicrosecond);

}
