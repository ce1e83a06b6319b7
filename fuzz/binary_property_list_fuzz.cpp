// Binary property lists: any bytes are read or refused within the limits, and what is read comes back.
#include "fuzz/property_list_graph.h"
#include "platform/proplists/binary_reader.h"
#include "platform/proplists/property_list_fault.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    NSDecodingLimits limits;
    limits.objects = 100'000;
    limits.depth = 200;
    try {
        requireThatItComesBack(
            platform::readBinaryPropertyList(std::as_bytes(std::span(data, size)), limits));
    } catch (const platform::PropertyListFault&) {
        return 0;
    }
    return 0;
}
