#pragma once

#include "examples/incoming/file_record.h"

#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMPlatform/NSData.h"

#include <vector>

/// The document that results go into: the compressed file as a resource and a record of it as an object, and
/// at the end a dictionary that sums up, and one of digests in a domain of its own.
///
/// Each operation goes to the disk through a bundle object of its own, so that several threads may work at
/// once, and each file appears in one step. Operations answer what went wrong, or nothing.
class IntakeBundle {
public:
    static constexpr const char* kDigests = "digests"; ///< The domain: SHA-1 by name.
    static constexpr const char* kResourceFolder = "compressed";
    static constexpr const char* kResourceType = "gz";

    explicit IntakeBundle(const std::string& path) : mPath(path) { }

    const std::string& path() const { return mPath; }
    std::string open() const; ///< Makes the bundle unless it is there.
    /// The file's own name; with part of its digest in it when the bundle has another file of that name.
    std::string nameFor(const Receipt& receipt) const;
    std::string store(const std::string& name, const NSRef<NSData>& compressed) const;
    NSRef<NSData> compressed(const std::string& name) const; ///< Null when it is not there.
    std::string keep(const Receipt& receipt, const NSRef<LUMFileRef>& source) const;
    NSRef<FileRecord> record(const std::string& name) const; ///< Null when it is not there.
    /// Adds files that were taken in to the dictionaries.
    std::string sumUp(const std::vector<Receipt>& receipts, const std::string& originals) const;

private:
    NSRef<LUMDocumentBundle> bundle() const;
    NSRef<NSString> compressedPath(const std::string& name) const;

    const std::string mPath;
};
