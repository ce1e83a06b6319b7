#include "examples/bundle/verification.h"

#include "examples/bundle/bundle_contents.h"
#include "examples/bundle/stand_in.h"
#include "examples/incoming/intake_bundle.h"

#include "LUMFoundation/LUMData_Compression.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>

namespace fs = std::filesystem;

namespace {

/// Whether anything is there, or may be.
bool isThere(const NSRef<NSString>& path)
{
    std::error_code unknown;
    return path && fs::symlink_status(path->utf8(), unknown).type() != fs::file_type::not_found;
}

bool canBeRead(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 64 * 1024> block;
    while (stream.read(block.data(), block.size())) { }
    return stream.eof();
}

class Verification {
public:
    explicit Verification(const NSRef<LUMDocumentBundle>& bundle)
        : mBundle(bundle), mIntake(bundle->path()->utf8())
    {
    }

    bool run()
    {
        const BundleContents::Report report = [this](const std::string& where, const std::string& what) {
            problem(where, what);
        };
        checkCodes();
        for (const std::string& domain : BundleContents::domains(*mBundle, report)) {
            checkDictionary(domain);
            for (const std::string& key : BundleContents::objectKeys(*mBundle, domain, report))
                checkObject(domain, key);
            for (const auto& resource : BundleContents::resources(*mBundle, domain, report))
                if (!canBeRead(resource.file))
                    problem(resource.file, "the resource cannot be read");
        }
        checkDigests();
        std::printf(
            "%zu objects, %zu records of files, %zu problems\n", mObjects, mDigests.size(), mProblems);
        for (const std::string& name : mStandIns->unknownClasses())
            std::printf("objects of class %s were looked at from outside only\n", name.c_str());
        return mProblems == 0;
    }

private:
    void problem(const std::string& where, const std::string& what)
    {
        ++mProblems;
        std::printf("%s: %s\n", where.c_str(), what.c_str());
    }

    /// The bundle has codes of 0 for a file that it does not read, whatever the reason; only an empty one
    /// says so itself.
    void checkCodes()
    {
        const auto path = mBundle->path()->stringByAppendingPathComponent("Contents/PkgInfo");
        if (!isThere(path) || mBundle->creatorCode() != 0 || mBundle->typeCode() != 0)
            return;
        const auto bytes = NSData::dataWithContentsOfFile(path);
        if (!bytes || bytes->length() > 0)
            problem("PkgInfo", "the codes cannot be read");
    }

    void checkDictionary(const std::string& domain)
    {
        const auto path = mBundle->pathForDictionaryWithDomain(BundleContents::named(domain));
        if (isThere(path) && !mBundle->dictionaryForDomain(BundleContents::named(domain)))
            problem(BundleContents::title(domain), "its dictionary cannot be read");
    }

    void checkObject(const std::string& domain, const std::string& key)
    {
        ++mObjects;
        try {
            NSRef<NSError> error;
            const NSId object = decodeObject(*mBundle, domain, key, mStandIns, &error);
            if (error)
                problem(key, "the object cannot be read: " + error->localizedDescription()->utf8());
            else if (const auto record = NSCast<FileRecord>(object))
                checkRecord(key, *record);
        } catch (const NSException& broken) {
            problem(key, broken.what());
        }
    }

    void checkRecord(const std::string& key, const FileRecord& record)
    {
        mDigests[key] = record.receipt().sha1;
        const auto bytes = LUMData_Compression::gzipInflate(mIntake.compressed(key));
        if (!bytes)
            problem(key, "there is no compressed file that inflates");
        else
            checkBytes(key + ", compressed", bytes, record.receipt());
        const auto path = record.source() ? record.source()->path() : nullptr;
        const auto source = NSData::dataWithContentsOfFile(path);
        if (!source)
            problem(key, "the source is not found");
        else
            checkBytes(key + ", source", source, record.receipt());
    }

    void checkBytes(const std::string& where, const NSRef<NSData>& bytes, const Receipt& receipt)
    {
        if (bytes->length() != receipt.size || LUMData_Compression::crc32(bytes) != receipt.crc32
            || LUMData_Compression::sha1DigestString(bytes)->utf8() != receipt.sha1)
            problem(where, "not the bytes that the record tells of");
    }

    /// The dictionary is written at the end of a run, so it may lack what a run was stopped at.
    void checkDigests()
    {
        const auto digests = mBundle->dictionaryForDomain(IntakeBundle::kDigests);
        if (!digests)
            return;
        for (const auto& [key, digest] : digests) {
            const auto record = mDigests.find(NSCast<NSString>(key)->utf8());
            if (record == mDigests.end())
                problem(key->description()->utf8(), "a digest without a record");
            else if (!NSEqual(digest, NSRef<NSString>(record->second)))
                problem(record->first, "the digest is not the record's");
        }
    }

    NSRef<LUMDocumentBundle> mBundle;
    IntakeBundle mIntake;
    NSRef<StandIns> mStandIns = NSMake<StandIns>();
    std::map<std::string, std::string> mDigests; // of the records
    std::size_t mObjects = 0;
    std::size_t mProblems = 0;
};

}

bool verifyBundle(const NSRef<LUMDocumentBundle>& bundle)
{
    return Verification(bundle).run();
}
