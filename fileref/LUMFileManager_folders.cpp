// The folder at a path, made when it is missing.
#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileRef.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"
#include "core/status_error.h"
#include "core/statuses.h"

#include <vector>

namespace {

constexpr NSUInteger kLongest = 10240;

NSRef<NSString> folderOf(const NSRef<NSString>& path)
{
    const auto above = path->stringByDeletingLastPathComponent();
    return above->length() > 0 ? above : NSRef<NSString>("."); // of a lone name, where the process is
}

/// The first of the path and those above it that is there, or what is wrong with one. Those below it are
/// added to `missing`, the lowest first.
NSRef<LUMFileRef> firstThere(
    NSRef<NSString> path, bool lookAbove, std::vector<NSRef<NSString>>& missing, NSRef<NSError>& problem)
{
    for (;;) {
        auto found = LUMFileRef::fileRefWithPath(path, &problem);
        if (found || (problem && problem->code() != lum::kStatusNotFound))
            return found;
        problem = nullptr;
        missing.push_back(path->lastPathComponent());
        const auto above = path->length() > 0 ? folderOf(path) : nullptr;
        if (!lookAbove || !above || above->isEqualToString(path))
            return nullptr;
        path = above;
    }
}

/// The folder of that name, made if it is missing.
NSRef<LUMFileRef> childFolder(
    const NSRef<LUMFileRef>& parent, const NSRef<NSString>& name, NSRef<NSError>& problem)
{
    auto child = parent->createChildIfNeededWithName(name, true, &problem);
    if (!child && problem && problem->code() == lum::kStatusExists) {
        child = parent->childWithName(name);
        if (child)
            problem = nullptr; // somebody else has made it meanwhile
    }
    return child && child->isDirectory() ? child : nullptr;
}

NSRef<LUMFileRef> folderAt(const NSRef<NSString>& path, bool createIntermediates, NSRef<NSError>& problem)
{
    if (path && path->length() > kLongest)
        return lum::fail(&problem, lum::kStatusBadName);
    std::vector<NSRef<NSString>> missing;
    const auto expanded = path ? path->stringByExpandingTildeInPath() : nullptr;
    auto folder = firstThere(expanded, createIntermediates, missing, problem);
    if (problem)
        return nullptr;
    if (folder && !folder->isDirectory()) {
        lum::fail(&problem, lum::kStatusNotAFolder);
        // Deliberate: what is at the path itself is answered beside the error.
        return missing.empty() ? folder : nullptr;
    }
    for (auto name = missing.rbegin(); folder && name != missing.rend(); ++name)
        folder = childFolder(folder, *name, problem);
    if (!folder && !problem)
        lum::fail(&problem, lum::kStatusNoFolder);
    return folder;
}

NSRef<LUMFileRef> createFolder(const NSRef<NSFileManager>& /*manager*/, const NSRef<NSString>& path,
    bool createIntermediates, NSRef<NSError>* error)
{
    NSRef<NSError> problem;
    auto folder = folderAt(path, createIntermediates, problem);
    if (problem && error)
        *error = problem;
    return folder;
}

using CreateDirectory =
    lum::ExtensionOperation<"createDirectoryAtPath:withIntermediateDirectories:error:", &createFolder>;

constexpr NSMethod kMethods[] = {
    CreateDirectory::method(),
};

}

std::span<const NSMethod> lum::fileManagerFolderMethods()
{
    return kMethods;
}

NSRef<LUMFileRef> LUMFileManager::createDirectoryAtPath(const NSRef<NSFileManager>& manager,
    const NSRef<NSString>& path, bool createIntermediates, NSRef<NSError>* error)
{
    return CreateDirectory::call(manager, path, createIntermediates, error);
}
