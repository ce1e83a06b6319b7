// Property lists in XML: any bytes are read or refused within the limits, what is read comes back, and the
// reader of plain XML reads nothing otherwise than the reader of any XML.
#include "fuzz/property_list_graph.h"
#include "platform/proplists/plain_xml_reader.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/xml_reader.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    NSDecodingLimits limits;
    limits.objects = 100'000;
    limits.depth = 200;
    const auto bytes = std::as_bytes(std::span(data, size));
    const NSId plain = platform::readPlainXmlPropertyList(bytes, limits);
    NSId object;
    try {
        object = platform::readXmlPropertyList(bytes, limits);
    } catch (const platform::PropertyListFault&) {
        require(!plain);
        return 0;
    }
    require(!plain || NSEqual(plain, object));
    requireThatItComesBack(object);
    return 0;
}
