#pragma once

#include "LUMPlatform/FSRef.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace platform {
class FolderListing;
}

/// A walk over the entries of one folder. It holds a descriptor until it is closed or destroyed.
/// Threads: one at a time.
///
///     FSRef folder, item;
///     FSIterator iterator;
///     if (FSPathMakeRef("/home/me/Takes", folder) == 0
///         && FSOpenIterator(folder, kFSIterateFlat, iterator) == 0)
///         while (FSGetCatalogInfoBulk(iterator, item) == 0)
///             use(item);
class NS_EXPORT FSIterator {
public:
    FSIterator();
    FSIterator(FSIterator&&) noexcept;
    FSIterator& operator=(FSIterator&&) noexcept;
    ~FSIterator();

private:
    friend NS_EXPORT OSStatus FSOpenIterator(const FSRef&, std::uint32_t, FSIterator&);
    friend NS_EXPORT OSStatus FSGetCatalogInfoBulk(FSIterator&, FSRef&, std::string_view*);
    friend NS_EXPORT OSStatus FSCloseIterator(FSIterator&);

    std::unique_ptr<platform::FolderListing> mListing;
};

/// The entries of the folder itself, and not what is below them: the one way of walking there is.
inline constexpr std::uint32_t kFSIterateFlat = 0;
/// Status: the walk is at its end.
inline constexpr OSStatus kFSNoMoreItems = -1417;

/// Begins a walk: -120 when `folder` is none, -43 when it is gone, -50 for other flags.
NS_EXPORT OSStatus FSOpenIterator(const FSRef& folder, std::uint32_t flags, FSIterator& iterator);

/// The next entry, and its name if asked for, valid until the next call; kFSNoMoreItems when there is none
/// left, and from then on; another status when the folder cannot be read on, or in place of it when all
/// others were told and one could not be looked at. Symbolic links are not followed, "." and ".." left out,
/// as are names that are not UTF-8, and entries that went away since the folder was read.
///
/// The folder is read in large pieces, each entry looked at once, and none opened: a reference takes its
/// descriptor when it is used. Until then an entry that is removed while another one is made within the same
/// tick of the file system's clock, a few milliseconds, cannot be told from that one if it got its number.
NS_EXPORT OSStatus FSGetCatalogInfoBulk(FSIterator& iterator, FSRef& item, std::string_view* name = nullptr);

/// Ends the walk early; -50 when there is none.
NS_EXPORT OSStatus FSCloseIterator(FSIterator& iterator);
