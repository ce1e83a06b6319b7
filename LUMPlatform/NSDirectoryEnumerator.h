#pragma once

#include "LUMPlatform/NSEnumerator.h"

#include <memory>

class NSDictionary;

/// What is in a folder at any depth: paths relative to it, each folder before what is in it.
///
/// Symbolic links are told, never followed. Folders that cannot be read count as empty, and what is removed
/// meanwhile is left out; so are names that are not UTF-8. However deep the tree, a few descriptors are
/// enough. NSFileManager::enumeratorAtPath makes it. Threads: one at a time.
///
///     auto files = manager->enumeratorAtPath("/home/me/Song");
///     for (const NSId& path : *files) // Contents, Contents/PkgInfo, ...
///         if (NSEqual(files->fileAttributes()->objectForKey(NSFileType), NSFileTypeDirectory))
///             files->skipDescendants();
class NS_EXPORT NSDirectoryEnumerator : public NSEnumerator {
public:
    static const NSClass& classObject();

    NSId nextObject() override;
    /// Goes on to the next entry without its path, also to those that nextObject leaves out, and what is in
    /// them; false at the end. For who wants fileAttributes alone.
    /// Selector: step
    bool step();
    /// The attributes of what nextObject last gave or step went to, as attributesOfItemAtPath tells them;
    /// null before the first and once it is gone.
    /// Selector: fileAttributes
    NSRef<NSDictionary> fileAttributes() const;
    /// Leaves out what is in the folder that nextObject last gave or step went to.
    /// Selector: skipDescendants
    void skipDescendants();

protected:
    friend class NSFileManager;
    struct Walk;
    explicit NSDirectoryEnumerator(std::unique_ptr<Walk> walk);
    ~NSDirectoryEnumerator() override;

private:
    std::unique_ptr<Walk> mWalk;
};
