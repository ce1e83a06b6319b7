#include "examples/incoming/closing.h"

#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"

#include <cstdio>

namespace {

constexpr OSStatus kNameIsTaken = -48;
constexpr std::size_t kMostLookedFor = 500; // of very many, evenly among them

/// The first free one of "originals-1", "originals-2", ... ; null when the folder cannot be renamed.
NSRef<NSString> renameOriginals(const NSRef<LUMFileRef>& folder)
{
    for (int number = 1;; ++number) {
        auto name = NSString::stringWithFormat("originals-%d", number);
        NSRef<NSError> error;
        if (folder->renameWithName(name, &error))
            return name;
        if (!error || error->code() != kNameIsTaken)
            return nullptr;
    }
}

/// Whether the record of a file that was taken in leads to its source in that folder.
bool findsSource(const IntakeBundle& bundle, const Receipt& receipt, const NSRef<LUMFileRef>& folder)
{
    try {
        const auto record = bundle.record(receipt.name);
        return record && record->source() && record->source()->isChildOf(folder);
    } catch (const NSException& broken) {
        std::fprintf(stderr, "incoming: the record of %s: %s\n", receipt.name.c_str(), broken.what());
        return false;
    }
}

}

bool closeIntake(const std::string& into, const IntakeBundle& bundle, std::vector<Receipt> receipts)
{
    std::erase_if(receipts, [](const Receipt& receipt) { return !receipt.failure.empty(); });
    if (receipts.empty())
        return true;
    const auto folder = LUMFileRef::fileRefWithPath(into + "/originals");
    const auto name = folder ? renameOriginals(folder) : nullptr;
    if (!name) {
        std::fprintf(stderr, "incoming: cannot rename %s/originals\n", into.c_str());
        return false;
    }
    const std::size_t step = (receipts.size() - 1) / kMostLookedFor + 1;
    std::size_t lookedFor = 0;
    std::size_t found = 0;
    for (std::size_t at = 0; at < receipts.size(); at += step) {
        ++lookedFor;
        if (findsSource(bundle, receipts[at], folder))
            ++found;
    }
    std::printf("originals renamed to %s; the records found %zu of %zu again\n", name->utf8().c_str(), found,
        lookedFor);

    const std::string problem = bundle.sumUp(receipts, name->utf8());
    if (!problem.empty())
        std::fprintf(stderr, "incoming: cannot sum up in the bundle: %s\n", problem.c_str());
    std::printf("all results are in %s\n", bundle.path().c_str());
    return found == lookedFor && problem.empty();
}
