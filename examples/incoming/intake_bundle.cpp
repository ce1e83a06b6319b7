#include "examples/incoming/intake_bundle.h"

#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSURL.h"

#include <filesystem>

namespace {

constexpr std::uint32_t fourCharacters(const char (&code)[5])
{
    std::uint32_t value = 0;
    for (int at = 0; at < 4; ++at)
        value = value << 8 | static_cast<unsigned char>(code[at]);
    return value;
}

constexpr std::uint32_t kCreator = fourCharacters("Inco");
constexpr std::uint32_t kType = fourCharacters("Take");

constexpr std::size_t kDigestInNames = 12; // characters

std::string reasonOf(const NSRef<NSError>& error)
{
    return error ? error->localizedDescription()->utf8() : "it cannot be written";
}

long long numberIn(const NSRef<NSDictionary>& dictionary, const char* key)
{
    auto number = dictionary ? dictionary->objectForKey<NSNumber>(key) : nullptr;
    return number ? number->longLongValue() : 0;
}

}

NSRef<LUMDocumentBundle> IntakeBundle::bundle() const
{
    return LUMDocumentBundle::documentBundleWithPath(mPath, false);
}

std::string IntakeBundle::open() const
{
    NSRef<NSError> error;
    auto made = LUMDocumentBundle::documentBundleWithPath(mPath, true, &error);
    if (!made)
        return reasonOf(error);
    if (made->creatorCode() != kCreator || made->typeCode() != kType) {
        made->setCreatorCode(kCreator);
        made->setTypeCode(kType);
    }
    return {};
}

NSRef<NSString> IntakeBundle::compressedPath(const std::string& name) const
{
    auto open = bundle();
    auto url = open ? open->urlForResource(name, kResourceType, kResourceFolder, true) : nullptr;
    return url ? url->path() : nullptr;
}

std::string IntakeBundle::nameFor(const Receipt& receipt) const
{
    const std::filesystem::path name = receipt.name;
    try {
        const auto earlier = record(receipt.name);
        if (!earlier || earlier->receipt().sha1 == receipt.sha1)
            return receipt.name;
    } catch (const NSException&) {
        // A record that cannot be read is one all the same.
    }
    return name.stem().string() + '.' + receipt.sha1.substr(0, kDigestInNames) + name.extension().string();
}

std::string IntakeBundle::store(const std::string& name, const NSRef<NSData>& compressed) const
{
    NSRef<NSError> error;
    return compressed->writeToFile(compressedPath(name), true, &error) ? std::string() : reasonOf(error);
}

NSRef<NSData> IntakeBundle::compressed(const std::string& name) const
{
    return NSData::dataWithContentsOfFile(compressedPath(name));
}

std::string IntakeBundle::keep(const Receipt& receipt, const NSRef<LUMFileRef>& source) const
{
    NSRef<NSError> error;
    auto open = bundle();
    if (!open)
        return "the bundle is gone";
    const bool isSaved = open->saveObject(FileRecord::recordOf(receipt, source), receipt.name, &error);
    return isSaved ? std::string() : reasonOf(error);
}

NSRef<FileRecord> IntakeBundle::record(const std::string& name) const
{
    auto open = bundle();
    return open ? NSCast<FileRecord>(open->decodeObjectWithKey(name)) : nullptr;
}

std::string IntakeBundle::sumUp(const std::vector<Receipt>& receipts, const std::string& originals) const
{
    auto open = bundle();
    if (!open)
        return "the bundle is gone";
    const auto before = open->dictionaryError();
    auto digests = NSMutableDictionary::dictionaryWithDictionary(open->dictionaryForDomain(kDigests));
    auto bytes = numberIn(before, "bytes");
    auto stored = numberIn(before, "stored");
    for (const Receipt& receipt : receipts) {
        digests->setObject(receipt.sha1, receipt.name);
        bytes += static_cast<long long>(receipt.size);
        stored += static_cast<long long>(receipt.stored);
    }
    auto summary =
        NSDictionary::of({ { "name", "Files taken in" }, { "files", digests->count() }, { "bytes", bytes },
            { "stored", stored }, { "originals", originals }, { "updated", NSDate::date() } });
    NSRef<NSError> error;
    const bool isWritten =
        open->setDictionaryForDomain(digests, kDigests, &error) && open->setDictionary(summary, &error);
    return isWritten ? std::string() : reasonOf(error);
}
