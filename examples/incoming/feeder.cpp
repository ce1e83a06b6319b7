#include "examples/incoming/feeder.h"

#include "LUMPlatform/NSString.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kLargest = 48u << 20;
constexpr std::uintmax_t kLargeEnough = 16u << 20;
constexpr std::uintmax_t kTotal = 192u << 20;
constexpr std::size_t kLookedAt = 20'000;
constexpr std::size_t kChunk = 256u << 10;
constexpr std::size_t kLongestName = 200; // bytes

struct Source {
    std::uintmax_t size;
    fs::path path; // empty: made
};

/// Whether a name can stand in the drop folder: there it gets a number and an extension, and what is not
/// UTF-8 would not be noticed.
bool canBeFed(const std::string& name)
{
    return name.size() <= kLongestName && NSString::stringWithUTF8String(name);
}

/// Readable plain files of this machine, smallest first.
std::vector<Source> realFiles()
{
    std::vector<Source> found;
    for (const char* root : { "/usr/lib", "/usr/share", "/usr/bin", "/etc" }) {
        std::error_code problem;
        fs::recursive_directory_iterator walk(root, fs::directory_options::skip_permission_denied, problem);
        for (std::size_t seen = 0; !problem && walk != fs::end(walk) && seen < kLookedAt;
             walk.increment(problem), ++seen) {
            std::error_code gone;
            if (!walk->is_regular_file(gone) || walk->is_symlink(gone))
                continue;
            std::uintmax_t size = walk->file_size(gone);
            if (!gone && size > 0 && size <= kLargest && canBeFed(walk->path().filename().string()))
                found.push_back({ size, walk->path() });
        }
    }
    std::sort(found.begin(), found.end(), [](const Source& a, const Source& b) { return a.size < b.size; });
    return found;
}

/// `count` of them over the whole range of sizes, as long as their sum stays within bounds.
std::vector<Source> chosenFiles(std::size_t count)
{
    const std::vector<Source> all = realFiles();
    std::vector<Source> chosen;
    std::uintmax_t total = 0;
    if (all.empty() || all.back().size < kLargeEnough)
        chosen.push_back({ kLargeEnough + 12'345, {} });
    else
        chosen.push_back(all.back());
    total = chosen.back().size;
    for (std::size_t at = 0; chosen.size() < count && at < all.size() && at < count; ++at) {
        // Evenly over the sorted list; from where the sum would grow too large on, over its smaller half.
        const Source& next = all[at * all.size() / count];
        const Source& taken = total + next.size <= kTotal ? next : all[at * (all.size() / 2) / count];
        total += taken.size;
        chosen.push_back(taken);
    }
    for (std::size_t at = 0; chosen.size() < count; ++at)
        chosen.push_back({ 1 + at % 5'000, {} });
    return chosen;
}

bool copyInChunks(std::istream& from, std::ostream& to)
{
    std::vector<char> chunk(kChunk);
    while (from) {
        from.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        to.write(chunk.data(), from.gcount());
        to.flush();
    }
    return from.eof() && to.good();
}

bool writeMadeFile(std::ostream& to, std::uintmax_t size)
{
    std::string line;
    for (std::uintmax_t written = 0, number = 0; written < size; written += line.size()) {
        line = "line " + std::to_string(number++) + " of a file made for this run\n";
        line.resize(static_cast<std::size_t>(std::min<std::uintmax_t>(line.size(), size - written)));
        to << line;
    }
    to.flush();
    return to.good();
}

}

int feedFolder(const std::string& folder, std::size_t count)
{
    std::size_t number = 0;
    for (const Source& source : chosenFiles(count)) {
        char prefix[16];
        std::snprintf(prefix, sizeof prefix, "%05zu-", ++number);
        const fs::path name =
            fs::path(folder) / (prefix + (source.path.empty() ? "made" : source.path.filename().string()));
        const std::string partial = name.string() + ".partial";
        std::ofstream to(partial, std::ios::binary);
        bool whole = to.is_open();
        if (whole && source.path.empty())
            whole = writeMadeFile(to, source.size);
        else if (whole) {
            std::ifstream from(source.path, std::ios::binary);
            whole = from.is_open() ? copyInChunks(from, to) : writeMadeFile(to, source.size);
        }
        to.close();
        std::error_code problem;
        if (whole)
            fs::rename(partial, name.string() + ".complete", problem);
        if (!whole || problem) {
            std::fprintf(stderr, "incoming: cannot feed %s\n", name.c_str());
            return 1;
        }
    }
    return 0;
}
