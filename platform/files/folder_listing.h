#pragma once

#include "platform/files/folder_entries.h"
#include "platform/files/reference_node.h"

#include <vector>

namespace platform {

/// The entries of a folder as references, each looked at once and none opened.
class FolderListing {
public:
    /// 0 or a negative errno: -ENOTDIR when the node is no folder.
    static int open(ReferenceNode& folder, std::unique_ptr<FolderListing>& opened);

    /// 1 for an entry, whose name is valid until the next call; 0 at the end; a negative errno when the
    /// folder cannot be read on, or at the end when an entry could not be looked at.
    int next(NodeRef& made, std::string_view& name);

private:
    struct Place {
        std::uint64_t mount;
        std::uint64_t device;
        NodeSystem::Volume volume;
    };

    FolderListing(int folder, std::string path);
    int begin();
    int volumeOf(const char* name, const FileAttributes& attributes, NodeSystem::Volume& volume);
    int identify(const char* name, FileIdentity& identity);

    NodeSystem& mSystem = NodeSystem::current();
    FolderReader mReader;
    const std::string mPath;
    int mProblem = 0; // of the first entry that could not be looked at
    std::vector<Place> mPlaces; // where entries were so far, the folder's own place first
};

}
