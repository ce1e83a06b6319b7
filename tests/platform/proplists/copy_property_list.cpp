// copy_property_list binary|xml: copies a property list from its input to its output.
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"

#include <iostream>
#include <iterator>

int main(int argc, char** argv)
{
    const std::string bytes { std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>() };
    const bool isBinary = argc > 1 && std::string_view(argv[1]) == "binary";
    NSRef<NSError> error;
    NSId object = NSPropertyListSerialization::propertyListWithData(
        NSData::dataWithBytes(bytes.data(), bytes.size()), NSPropertyListImmutable, nullptr, &error);
    NSRef<NSData> copy;
    if (object)
        copy = NSPropertyListSerialization::dataWithPropertyList(
            object, isBinary ? NSPropertyListBinaryFormat_v1_0 : NSPropertyListXMLFormat_v1_0, 0, &error);
    if (!copy) {
        std::cerr << error << '\n';
        return 1;
    }
    std::cout.write(
        reinterpret_cast<const char*>(copy->bytes().data()), static_cast<std::streamsize>(copy->length()));
    return std::cout.flush() ? 0 : 1;
}
