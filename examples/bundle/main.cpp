// Looks into a document bundle: what is in it, one object, one dictionary, and whether all of it is whole.

#include "examples/bundle/bundle_contents.h"
#include "examples/bundle/stand_in.h"
#include "examples/bundle/verification.h"
#include "examples/incoming/file_record.h"

#include "LUMFoundation/LUMByteCountFormatter.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSPropertyListSerialization.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr const char* kUsage =
    "bundle list BUNDLE            what is in it, domain by domain\n"
    "bundle show BUNDLE KEY        one of the document's objects\n"
    "bundle plist BUNDLE DOMAIN    the dictionary of a domain, \"document\" for its own\n"
    "bundle verify BUNDLE          whether all of it can be read and belongs together\n";

constexpr NSInteger kMissing = -43; // the code of errors that tell so

enum Status { kFine = 0, kFailed = 1, kNoSense = 2 };

std::string fourCharacters(std::uint32_t code)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto character = static_cast<char>(code >> shift & 0xFF);
        text += character >= ' ' && character <= '~' ? character : '.';
    }
    return text;
}

Status list(const NSRef<LUMDocumentBundle>& bundle)
{
    std::printf("%s, creator %s, type %s\n", bundle->path()->utf8().c_str(),
        fourCharacters(bundle->creatorCode()).c_str(), fourCharacters(bundle->typeCode()).c_str());
    for (const std::string& domain : BundleContents::domains(*bundle)) {
        std::printf("%s\n", BundleContents::title(domain).c_str());
        if (const auto dictionary = bundle->dictionaryForDomain(BundleContents::named(domain)))
            std::printf("  dictionary  %llu entries\n", static_cast<unsigned long long>(dictionary->count()));
        for (const std::string& key : BundleContents::objectKeys(*bundle, domain))
            std::printf("  object      %s\n", key.c_str());
        for (const auto& resource : BundleContents::resources(*bundle, domain))
            std::printf("  resource    %s, %s\n", resource.path.c_str(),
                LUMByteCountFormatter::stringWithByteCount(resource.size)->utf8().c_str());
    }
    return kFine;
}

Status show(const NSRef<LUMDocumentBundle>& bundle, const std::string& key)
{
    NSRef<NSError> error;
    const NSId object = decodeObject(*bundle, {}, key, NSMake<StandIns>(), &error);
    if (error && error->code() != kMissing) {
        std::fprintf(stderr, "bundle: %s: %s\n", key.c_str(), error->localizedDescription()->utf8().c_str());
        return kFailed;
    }
    if (!object) {
        std::fprintf(stderr, "bundle: there is no object %s\n", key.c_str());
        return kFailed;
    }
    std::printf("%s\n", object->description()->utf8().c_str());
    return kFine;
}

Status plist(const NSRef<LUMDocumentBundle>& bundle, const std::string& domain)
{
    const auto dictionary =
        bundle->dictionaryForDomain(domain == "document" ? nullptr : NSRef<NSString>(domain));
    if (!dictionary) {
        std::fprintf(stderr, "bundle: there is no dictionary of %s\n", domain.c_str());
        return kFailed;
    }
    NSRef<NSError> error;
    const auto xml = NSPropertyListSerialization::dataWithPropertyList(
        dictionary, NSPropertyListXMLFormat_v1_0, 0, &error);
    if (!xml) { // as with control characters in a text, which only the binary form holds
        std::fprintf(stderr, "bundle: %s\n", error->localizedDescription()->utf8().c_str());
        return kFailed;
    }
    std::fwrite(xml->bytes().data(), 1, xml->length(), stdout);
    return kFine;
}

Status run(const std::vector<std::string>& words)
{
    const std::string command = words.empty() ? std::string() : words[0];
    const bool isAsked = (words.size() == 2 && (command == "list" || command == "verify"))
        || (words.size() == 3 && (command == "show" || command == "plist"));
    if (!isAsked) {
        const bool asksForHelp = command == "--help" || command == "-h";
        std::fprintf(asksForHelp ? stdout : stderr, "%s", kUsage);
        return asksForHelp ? kFine : kNoSense;
    }
    const auto bundle = LUMDocumentBundle::documentBundleWithPath(words[1], false);
    if (!bundle) {
        std::fprintf(stderr, "bundle: %s is no folder\n", words[1].c_str());
        return kFailed;
    }
    NSCoding::registerClass<FileRecord>();
    if (command == "list")
        return list(bundle);
    if (command == "verify")
        return verifyBundle(bundle) ? kFine : kFailed;
    return command == "show" ? show(bundle, words[2]) : plist(bundle, words[2]);
}

}

int main(int argc, char** argv)
{
    try {
        return run({ argv + 1, argv + argc });
    } catch (const NSException& exception) {
        std::fprintf(stderr, "bundle: %s\n", exception.what());
        return kFailed;
    }
}
