// PkgInfo files: any bytes give codes; whole codes that can be written come back, and those that cannot are
// no text.
#include "document/package_info.h"
#include "fuzz/require.h"
#include "platform/strings/utf_conversion.h"

namespace {

bool isWhole(std::uint32_t code)
{
    return (code & 0xFF) != 0 && (code & 0xFF00) != 0 && (code & 0xFF0000) != 0 && (code & 0xFF000000) != 0;
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const lum::PackageInfo info = lum::readPackageInfo(std::as_bytes(std::span(data, size)));
    const auto written = lum::writePackageInfo(info);
    if (written) {
        require(written->size() <= 8);
        require(platform::utf16FromUtf8(*written).has_value());
    }
    if (written && isWhole(info.creator) && isWhole(info.type)) {
        const lum::PackageInfo again = lum::readPackageInfo(std::as_bytes(std::span(*written)));
        require(again.creator == info.creator && again.type == info.type);
    }
    return 0;
}
