#pragma once

#include "LUMPlatform/NSObject.h"

class NSArray;
class NSData;
class NSDictionary;
class NSDirectoryEnumerator;
class NSError;

/// Files and folders by path.
///
/// Relative paths start at the process's current folder; a tilde is an ordinary character. Null and the empty
/// path name nothing. Errors are in NSOSStatusErrorDomain: -43 nothing is there, -48 something is there
/// already, -120 what should be a folder is none, -5000 not allowed, -34 no room, -44 a read-only volume, -37
/// no name, -50 the root, "." or ".." where they cannot be meant, -42 no descriptors left, -36 anything else.
/// Threads: any.
///
///     auto manager = NSFileManager::defaultManager();
///     NSRef<NSError> error;
///     if (!manager->copyItemAtPath("/home/me/Song", "/home/me/Song copy", &error))
///         std::cerr << error << '\n';
class NS_EXPORT NSFileManager : public NSObject {
public:
    static const NSClass& classObject();

    /// Always the same object.
    /// Selector: defaultManager
    static NSRef<NSFileManager> defaultManager();

    /// Whether the path leads to something, through symbolic links; a dangling link leads to nothing. Whether
    /// that is a folder is stored in `isDirectory`, which may be null and is untouched when nothing is there.
    /// Selector: fileExistsAtPath:isDirectory:; without the second argument fileExistsAtPath:
    bool fileExistsAtPath(const NSRef<NSString>& path, bool* isDirectory = nullptr) const;
    /// The name to show for a file, that of the path; empty for null.
    /// Selector: displayNameAtPath:
    NSRef<NSString> displayNameAtPath(const NSRef<NSString>& path) const;

    /// Makes a folder. With `createIntermediates` it makes those above it as well, and a folder that is
    /// already there is fine (-48 for anything else in its place); without, what is there gives -48 and a
    /// missing folder above -43. Then `attributes`, which may be null, are set as setAttributes does.
    /// Selector: createDirectoryAtPath:withIntermediateDirectories:attributes:error:
    [[nodiscard]] bool createDirectoryAtPath(const NSRef<NSString>& path, bool createIntermediates,
        const NSRef<NSDictionary>& attributes = nullptr, NSRef<NSError>* error = nullptr) const;
    /// Makes a file of these bytes, none for null, in one step; a file that is there gets them instead of its
    /// own. Then `attributes`, which may be null, are set as setAttributes does. False when either fails.
    /// Selector: createFileAtPath:contents:attributes:
    [[nodiscard]] bool createFileAtPath(const NSRef<NSString>& path, const NSRef<NSData>& contents,
        const NSRef<NSDictionary>& attributes = nullptr) const;

    /// The names in a folder, hidden ones too, in the order the file system yields them; null with an error
    /// when it cannot be read. Names that are not UTF-8, which no path can tell, are left out.
    /// Selector: contentsOfDirectoryAtPath:error:
    NSRef<NSArray> contentsOfDirectoryAtPath(
        const NSRef<NSString>& path, NSRef<NSError>* error = nullptr) const;
    /// All that is in a folder at any depth, one by one. The path itself is followed if it is a symbolic
    /// link. Of what is no folder it has nothing to tell; null when nothing is there.
    /// Selector: enumeratorAtPath:
    NSRef<NSDirectoryEnumerator> enumeratorAtPath(const NSRef<NSString>& path) const;

    /// What the file system knows about the item, of a symbolic link itself; slashes at the end do not count.
    /// See NSFileAttributes.h for the keys. Null with an error when nothing is there.
    /// Selector: attributesOfItemAtPath:error:
    NSRef<NSDictionary> attributesOfItemAtPath(
        const NSRef<NSString>& path, NSRef<NSError>* error = nullptr) const;
    /// Sets owner and group, then permissions, then the modification date, as far as `attributes` has them as
    /// numbers and a date; other keys and null are passed over. A symbolic link is followed. What was set
    /// before a failure stays.
    /// Selector: setAttributes:ofItemAtPath:error:
    bool setAttributes(const NSRef<NSDictionary>& attributes, const NSRef<NSString>& path,
        NSRef<NSError>* error = nullptr) const;

    // The following three work on files, on symbolic links themselves, and on folders with all that is in
    // them, however deep; neither depth nor cycles of links matter.

    /// Copies to a path where nothing is (else -48), inside what is copied excepted (-50). Permissions,
    /// times, extended attributes and, where that is allowed, owners come along; links stay links. The copy
    /// is seen when it is whole, and nothing stays of one that fails.
    /// Selector: copyItemAtPath:toPath:error:
    [[nodiscard]] bool copyItemAtPath(
        const NSRef<NSString>& from, const NSRef<NSString>& to, NSRef<NSError>* error = nullptr) const;
    /// Moves to a path where nothing is; what is there is never replaced (-48). To another volume it is
    /// copied as above, brought to the disk, and removed; when the removal fails, that error is told and the
    /// copy stays.
    /// Selector: moveItemAtPath:toPath:error:
    [[nodiscard]] bool moveItemAtPath(
        const NSRef<NSString>& from, const NSRef<NSString>& to, NSRef<NSError>* error = nullptr) const;
    /// Removes at once and for good; never follows a link. It ends at the first failure.
    /// Selector: removeItemAtPath:error:
    bool removeItemAtPath(const NSRef<NSString>& path, NSRef<NSError>* error = nullptr) const;

protected:
    NSFileManager() = default;
    ~NSFileManager() override = default;
};
