#include "examples/bundle/bundle_contents.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSURL.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <iterator>

namespace fs = std::filesystem;

namespace {

constexpr const char* kRefused = "not reached within the bundle";

/// What is below a folder, in order.
struct Below {
    std::vector<fs::path> files; ///< Links, too; none is followed.
    std::vector<fs::path> folders;
};

/// What is in one folder is added; nothing when that is not there.
void addEntries(Below& below, const fs::path& folder, const BundleContents::Report& report)
{
    std::error_code problem;
    fs::directory_iterator entries(folder, problem);
    for (; !problem && entries != fs::end(entries); entries.increment(problem)) {
        std::error_code unknown;
        const bool isFolder = entries->symlink_status(unknown).type() == fs::file_type::directory;
        (isFolder ? below.folders : below.files).push_back(entries->path());
    }
    if (problem && problem != std::errc::no_such_file_or_directory)
        report(folder, "cannot be listed: " + problem.message());
}

Below below(const fs::path& folder, const BundleContents::Report& report)
{
    Below all;
    addEntries(all, folder, report);
    for (std::size_t at = 0; at < all.folders.size(); ++at)
        addEntries(all, fs::path(all.folders[at]), report);
    std::sort(all.files.begin(), all.files.end());
    std::sort(all.folders.begin(), all.folders.end());
    return all;
}

bool isObject(const fs::path& path)
{
    return path.extension() == ".object";
}

/// Whether a file of `all` that could be an object is below the folder, which is so for keys with a "/".
bool holdsObjects(const fs::path& folder, const Below& all)
{
    const std::string beginning = folder.string() + '/';
    return std::any_of(all.files.begin(), all.files.end(),
        [&](const fs::path& file) { return isObject(file) && file.string().starts_with(beginning); });
}

}

void BundleContents::ignore(const std::string&, const std::string&) { }

NSRef<NSString> BundleContents::named(const std::string& domain)
{
    return domain.empty() ? nullptr : NSRef<NSString>(domain);
}

std::string BundleContents::title(const std::string& domain)
{
    return domain.empty() ? "document" : domain;
}

std::vector<std::string> BundleContents::domains(const LUMDocumentBundle& bundle, const Report& report)
{
    Below entries; // the bundle tells nothing of a folder that it cannot list
    if (const auto path = bundle.path())
        addEntries(entries, fs::path(path->utf8()) / "Contents", report);
    std::vector<std::string> names { std::string() };
    for (const NSId& domain : bundle.presentDomains())
        if (!NSEqual(domain, LUMDocumentBundle_DocumentDomain))
            names.push_back(NSCast<NSString>(domain)->utf8());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> BundleContents::objectKeys(
    const LUMDocumentBundle& bundle, const std::string& domain, const Report& report)
{
    const std::string none(NAME_MAX + 1, 'x'); // a key that no object can have
    const auto path = bundle.pathForObjectWithKey(none, named(domain), false);
    if (!path) {
        report(title(domain) + ", objects", kRefused);
        return {};
    }
    const fs::path folder = path->stringByDeletingLastPathComponent()->utf8();
    const Below all = below(folder, report);
    std::vector<fs::path> objects;
    std::copy_if(all.files.begin(), all.files.end(), std::back_inserter(objects), isObject);
    std::copy_if(all.folders.begin(), all.folders.end(), std::back_inserter(objects),
        [&](const fs::path& entry) { return isObject(entry) && !holdsObjects(entry, all); });
    std::vector<std::string> keys;
    keys.reserve(objects.size());
    for (const fs::path& object : objects)
        keys.push_back(object.lexically_relative(folder).replace_extension().string());
    return keys;
}

std::vector<BundleContents::Resource> BundleContents::resources(
    const LUMDocumentBundle& bundle, const std::string& domain, const Report& report)
{
    std::vector<NSRef<NSString>> areas { named(domain) };
    if (domain.empty()) // resources given to the document's domain by its name are in an area apart
        areas.push_back(LUMDocumentBundle_DocumentDomain);
    std::vector<Resource> resources;
    for (const NSRef<NSString>& area : areas) {
        const auto url = bundle.urlForResourceDomain(nullptr, nullptr, nullptr, area, false);
        if (!url) {
            report(title(domain) + ", resources", kRefused);
            continue;
        }
        const fs::path folder = url->path()->utf8();
        for (const fs::path& file : below(folder, report).files) {
            std::error_code unknown; // a link may lead to itself
            const auto type = fs::status(file, unknown).type();
            const bool isReached = type == fs::file_type::regular;
            if (isReached || type == fs::file_type::not_found || type == fs::file_type::none)
                resources.push_back({ file.lexically_relative(folder), file,
                    isReached ? static_cast<std::uint64_t>(fs::file_size(file, unknown)) : 0 });
        }
    }
    return resources;
}
