// URLs that name a file by its identity hold an alias record, in hexadecimal digits.
#include "platform/files/alias_resolution.h"
#include "platform/files/file_reference_form.h"
#include "platform/files/reference_opening.h"
#include "platform/files/reference_path.h"

namespace {

using platform::AliasRecord;
using platform::NodeRef;

constexpr std::string_view kDigits = "0123456789abcdef";

std::string textOf(std::span<const std::byte> bytes)
{
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::byte byte : bytes) {
        text += kDigits[std::to_integer<std::size_t>(byte >> 4)];
        text += kDigits[std::to_integer<std::size_t>(byte & std::byte(15))];
    }
    return text;
}

/// Empty for what textOf() does not write.
std::vector<std::byte> bytesOf(std::string_view text)
{
    std::vector<std::byte> bytes;
    if (text.size() % 2 != 0)
        return {};
    bytes.reserve(text.size() / 2);
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const std::size_t high = kDigits.find(text[at]);
        const std::size_t low = kDigits.find(text[at + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos)
            return {};
        bytes.push_back(static_cast<std::byte>(high << 4 | low));
    }
    return bytes;
}

class AliasForm final : public platform::FileReferenceForm {
public:
    std::string identityAt(const std::string& path) override
    {
        NodeRef node;
        AliasRecord record;
        if (platform::openReference(path, node) != 0 || platform::describeAlias(*node, record) != 0)
            return {};
        return textOf(platform::encodeAlias(record));
    }
    std::string pathOf(std::string_view identity) override
    {
        AliasRecord record;
        NodeRef node;
        std::string path;
        if (!platform::decodeAlias(bytesOf(identity), record)
            || platform::resolveAlias(record, platform::AliasTarget::Itself, node) != 0
            || platform::locate(*node, path) != 0)
            return {};
        return path;
    }
};

/// Runs once, when the library is loaded.
[[gnu::constructor]] void giveForm()
{
    static AliasForm& form = *new AliasForm; // never destroyed: URLs may be asked until the very end
    platform::FileReferenceForm::use(&form);
}

}
