#pragma once

#include "LUMPlatform/FSRef.h"
#include "LUMPlatform/NSArgument.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Four characters in a number, the first in the highest byte.
using OSType = std::uint32_t;

/// What the classic desktop notes of a file: 16 bytes.
struct FileInfo {
    struct Point {
        std::int16_t v = 0;
        std::int16_t h = 0;
        bool operator==(const Point&) const = default;
    };

    OSType fileType = 0;
    OSType fileCreator = 0;
    std::uint16_t finderFlags = 0;
    Point location;
    std::uint16_t reservedField = 0;

    bool operator==(const FileInfo&) const = default;
};
template<> struct NSTypeCode<FileInfo> {
    static constexpr const char* value = "{FileInfo=IIS{Point=ss}S}";
};

/// A volume: the file system's own number, and the topmost folder by which an object of it was reached.
struct FSVolumeRef {
    std::uint64_t identifier = 0;
    std::string topFolder;
};

/// The old way to name an object, 70 bytes: volume, folder, and the name in Mac OS Roman after its length.
/// Numbers are cut to their lowest bits, so this tells objects apart only as well as those do.
#pragma pack(push, 2)
struct FSSpec {
    std::int16_t vRefNum = 0;
    std::int32_t parID = 0;
    std::uint8_t name[64] = {};
};
#pragma pack(pop)

/// What FSGetCatalogInfo and FSSetCatalogInfo are about; combined by "|".
using FSCatalogInfoBitmap = std::uint32_t;
inline constexpr FSCatalogInfoBitmap kFSCatInfoNone = 0;
inline constexpr FSCatalogInfoBitmap kFSCatInfoVolume = 0x4;
inline constexpr FSCatalogInfoBitmap kFSCatInfoFinderInfo = 0x800;

/// What there is to know about an object, as far as it was asked for.
struct FSCatalogInfo {
    FSVolumeRef volume;
    FileInfo finderInfo;
};

/// Tells of the object what `which` asks for, and fills what else is not null: the old name of it (-37 when
/// its name does not fit) and the folder that it is in (a reference to nothing for the root).
///
/// Finder information is kept in the extended attribute user.com.apple.FinderInfo; where that is missing,
/// what file servers keep in theirs is read. None at all is all zero, and no failure. -43 when the object is
/// gone. Threads: as for the reference.
///
///     FSCatalogInfo info;
///     if (FSGetCatalogInfo(file, kFSCatInfoFinderInfo, &info) == 0 && info.finderInfo.fileType == 0) {
///         info.finderInfo.fileType = 0x41494646; // 'AIFF'
///         if (FSSetCatalogInfo(file, kFSCatInfoFinderInfo, info) != 0)
///             std::cerr << "not allowed\n";
///     }
NS_EXPORT OSStatus FSGetCatalogInfo(const FSRef& ref, FSCatalogInfoBitmap which, FSCatalogInfo* info,
    FSSpec* spec = nullptr, FSRef* parent = nullptr);

/// Stores what `which` tells, of which only Finder information can be set (-50 for others). All zero removes
/// it, or hides what a file server has stored. -5000 without the right to write, and for what carries no such
/// attributes: symbolic links, devices.
NS_EXPORT OSStatus FSSetCatalogInfo(const FSRef& ref, FSCatalogInfoBitmap which, const FSCatalogInfo& info);

/// Renames the object within its folder; `renamed`, which may be null and may be `ref`, refers to it under
/// its new name.
///
/// -48 when something has that name, which stays as it is. -37 for a name that no object can have: empty,
/// ".", "..", with a slash or NUL inside, longer than the file system allows, or with half a surrogate pair.
/// Its own name is no change and no failure.
NS_EXPORT OSStatus FSRenameUnicode(const FSRef& ref, std::u16string_view name, FSRef* renamed);

/// Makes an empty file in a folder; `made` may be null. Names as for FSRenameUnicode; -120 when `folder` is
/// none.
NS_EXPORT OSStatus FSCreateFileUnicode(const FSRef& folder, std::u16string_view name, FSRef* made);
/// The same for a folder.
NS_EXPORT OSStatus FSCreateDirectoryUnicode(const FSRef& folder, std::u16string_view name, FSRef* made);

inline constexpr OSType kTrashFolderType = 0x74727368; // 'trsh'

/// The folders of one type that a volume has, the user's trash folders being the only type there is: the one
/// in the home directory where that is on the volume, and those at the top of the volume. Makes none; -43
/// when there is none.
NS_EXPORT OSStatus FSFindFolder(const FSVolumeRef& volume, OSType folderType, std::vector<FSRef>& folders);
