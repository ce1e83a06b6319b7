#include "examples/bundle/bundle_contents.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSURL.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

/// The plain files in a folder and those below it, in order; none when there is no such folder.
std::vector<fs::path> filesBelow(const NSRef<NSString>& folder)
{
    std::vector<fs::path> files;
    std::error_code problem;
    fs::recursive_directory_iterator walk(folder ? folder->utf8() : std::string(), problem);
    for (; !problem && walk != fs::end(walk); walk.increment(problem)) {
        std::error_code unknown; // a link may lead to itself
        if (walk->is_regular_file(unknown))
            files.push_back(walk->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

}

NSRef<NSString> BundleContents::named(const std::string& domain)
{
    return domain.empty() ? nullptr : NSRef<NSString>(domain);
}

std::string BundleContents::title(const std::string& domain)
{
    return domain.empty() ? "document" : domain;
}

std::vector<std::string> BundleContents::domains(const LUMDocumentBundle& bundle)
{
    std::vector<std::string> names { std::string() };
    for (const NSId& domain : bundle.presentDomains())
        if (!NSEqual(domain, LUMDocumentBundle_DocumentDomain))
            names.push_back(NSCast<NSString>(domain)->utf8());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> BundleContents::objectKeys(
    const LUMDocumentBundle& bundle, const std::string& domain)
{
    const auto some = bundle.pathForObjectWithKey("some", named(domain), false);
    const auto folder = some ? some->stringByDeletingLastPathComponent() : nullptr;
    std::vector<std::string> keys;
    for (const fs::path& file : filesBelow(folder))
        if (file.extension() == ".object")
            keys.push_back(file.lexically_relative(folder->utf8()).replace_extension().string());
    return keys;
}

std::vector<BundleContents::Resource> BundleContents::resources(
    const LUMDocumentBundle& bundle, const std::string& domain)
{
    std::vector<NSRef<NSString>> areas { named(domain) };
    if (domain.empty()) // resources given to the document's domain by its name are in an area apart
        areas.push_back(LUMDocumentBundle_DocumentDomain);
    std::vector<Resource> resources;
    for (const NSRef<NSString>& area : areas) {
        const auto url = bundle.urlForResourceDomain(nullptr, nullptr, nullptr, area, false);
        const auto folder = url ? url->path() : nullptr;
        for (const fs::path& file : filesBelow(folder)) {
            std::error_code gone;
            const auto size = fs::file_size(file, gone);
            resources.push_back({ file.lexically_relative(folder->utf8()).string(), gone ? 0 : size });
        }
    }
    return resources;
}
