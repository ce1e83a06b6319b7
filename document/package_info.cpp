#include "document/package_info.h"

#include "LUMPlatform/NSString.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t kCodeSize = 4;

std::uint32_t codeAt(std::span<const std::byte> bytes)
{
    std::uint32_t code = 0;
    for (std::byte byte : bytes.first(kCodeSize))
        code = code << 8 | std::to_integer<std::uint32_t>(byte);
    return code;
}

std::string textOf(std::uint32_t code)
{
    std::string text;
    for (unsigned shift : { 24U, 16U, 8U, 0U })
        text += static_cast<char>(code >> shift);
    return text.substr(0, text.find('\0'));
}

bool isUtf8(std::string_view text)
{
    return static_cast<bool>(NSString::stringWithUTF8String(text));
}

}

lum::PackageInfo lum::readPackageInfo(std::span<const std::byte> bytes)
{
    if (!isUtf8({ reinterpret_cast<const char*>(bytes.data()), bytes.size() }))
        return {};
    std::array<std::byte, 2 * kCodeSize> codes {};
    std::copy_n(bytes.begin(), std::min(bytes.size(), codes.size()), codes.begin());
    return { codeAt(codes), codeAt(std::span(codes).subspan(kCodeSize)) };
}

std::optional<std::string> lum::writePackageInfo(const PackageInfo& info)
{
    const std::string creator = textOf(info.creator);
    const std::string type = textOf(info.type);
    if (!isUtf8(creator) || !isUtf8(type))
        return std::nullopt;
    return creator + type;
}
