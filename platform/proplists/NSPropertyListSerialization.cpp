#include "LUMPlatform/NSPropertyListSerialization.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/binary_reader.h"
#include "platform/proplists/binary_writer.h"
#include "platform/proplists/plain_xml_reader.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/text_reader.h"
#include "platform/proplists/xml_reader.h"
#include "platform/proplists/xml_writer.h"

constexpr NSStringConstant NSCocoaErrorDomain("NSCocoaErrorDomain");

namespace {

void store(NSRef<NSError>* error, NSInteger code, const std::string& text)
{
    if (error)
        *error = NSError::errorWithDomain(
            NSCocoaErrorDomain, code, NSDictionary::of({ { NSLocalizedDescriptionKey, text + "." } }));
}

NSRef<NSData> write(const NSId& propertyList, NSPropertyListFormat format)
{
    switch (format) {
    case NSPropertyListBinaryFormat_v1_0:
        return platform::writeBinaryPropertyList(propertyList);
    case NSPropertyListXMLFormat_v1_0:
        return platform::writeXmlPropertyList(propertyList);
    default:
        throw platform::PropertyListFault(
            "property lists are not written in format " + std::to_string(format));
    }
}

NSId read(std::span<const std::byte> bytes, const NSDecodingLimits& limits, NSPropertyListFormat& format)
{
    if (bytes.size() > limits.bytes)
        throw platform::PropertyListFault("there are more than " + std::to_string(limits.bytes) + " bytes");
    if (platform::isBinaryPropertyList(bytes)) {
        format = NSPropertyListBinaryFormat_v1_0;
        return platform::readBinaryPropertyList(bytes, limits);
    }
    if (platform::isXmlPropertyList(bytes)) {
        format = NSPropertyListXMLFormat_v1_0;
        if (NSId propertyList = platform::readPlainXmlPropertyList(bytes, limits))
            return propertyList;
        return platform::readXmlPropertyList(bytes, limits);
    }
    format = NSPropertyListOpenStepFormat;
    return platform::readTextPropertyList(bytes, limits);
}

}

NSRef<NSData> NSPropertyListSerialization::dataWithPropertyList(
    const NSId& propertyList, NSPropertyListFormat format, NSUInteger, NSRef<NSError>* error)
{
    try {
        return write(propertyList, format);
    } catch (const platform::PropertyListFault& fault) {
        store(error, NSPropertyListWriteInvalidError, fault.text);
        return nullptr;
    }
}

NSRef<NSData> NSPropertyListSerialization::dataFromPropertyList(
    const NSId& propertyList, NSPropertyListFormat format, NSRef<NSString>* errorDescription)
{
    NSRef<NSError> error;
    auto data = dataWithPropertyList(propertyList, format, 0, &error);
    if (error && errorDescription)
        *errorDescription = error->localizedDescription();
    return data;
}

NSId NSPropertyListSerialization::propertyListWithData(const NSRef<NSData>& data, NSUInteger,
    NSPropertyListFormat* format, NSRef<NSError>* error, const NSDecodingLimits& limits)
{
    try {
        if (!data)
            throw platform::PropertyListFault("null is no property list");
        NSPropertyListFormat found {};
        NSId propertyList = read(data->bytes(), limits, found);
        if (format)
            *format = found;
        return propertyList;
    } catch (const platform::PropertyListFault& fault) {
        store(error, NSPropertyListReadCorruptError, fault.text);
        return nullptr;
    }
}
