#pragma once

#include "LUMPlatform/NSObject.h"

class NSArray;
class NSDictionary;
class NSError;

/// Files and folders by path.
///
/// Relative paths start at the process's current folder; a tilde is an ordinary character. Null and the empty
/// path name nothing. Errors are in NSOSStatusErrorDomain. Threads: any.
///
///     auto manager = NSFileManager::defaultManager();
///     if (!manager->fileExistsAtPath("/home/me/Drop"))
///         manager->createDirectoryAtPath("/home/me/Drop", true, nullptr, &error);
class NS_EXPORT NSFileManager : public NSObject {
public:
    static const NSClass& classObject();

    /// Always the same object. Selector: defaultManager
    static NSRef<NSFileManager> defaultManager();

    /// Whether the path leads to something, through symbolic links; a dangling link leads to nothing. Whether
    /// that is a folder is stored in `isDirectory`, which may be null and is untouched when nothing is there.
    /// Selector: fileExistsAtPath:isDirectory:; without the second argument fileExistsAtPath:
    bool fileExistsAtPath(const NSRef<NSString>& path, bool* isDirectory = nullptr) const;

    /// Makes a folder. With `createIntermediates` it makes those above it as well, and a folder that is
    /// already there is fine (-48 for anything else in its place); without, what is there gives -48 and a
    /// missing folder above -43. `attributes` is ignored: folders get mode 0777 less the umask.
    /// Selector: createDirectoryAtPath:withIntermediateDirectories:attributes:error:
    [[nodiscard]] bool createDirectoryAtPath(const NSRef<NSString>& path, bool createIntermediates,
        const NSRef<NSDictionary>& attributes = nullptr, NSRef<NSError>* error = nullptr) const;

    /// The names in a folder, hidden ones too, in the order the file system yields them; null with an error
    /// when it cannot be read. Names that are not UTF-8, which no path can tell, are left out.
    /// Selector: contentsOfDirectoryAtPath:error:
    NSRef<NSArray> contentsOfDirectoryAtPath(
        const NSRef<NSString>& path, NSRef<NSError>* error = nullptr) const;

protected:
    NSFileManager() = default;
    ~NSFileManager() override = default;
};
