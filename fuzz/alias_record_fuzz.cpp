#include "fuzz/require.h"
#include "platform/files/alias_record.h"

// Bytes are refused, or are the one way to write what was read from them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::byte> bytes = std::as_bytes(std::span(data, size));
    platform::AliasRecord record;
    if (!platform::decodeAlias(bytes, record))
        return 0;
    require(record.path.starts_with('/'));
    const std::vector<std::byte> again = platform::encodeAlias(record);
    require(std::equal(again.begin(), again.end(), bytes.begin(), bytes.end()));
    return 0;
}
