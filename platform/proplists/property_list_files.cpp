// How dictionaries and arrays come from files, and go there.
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"

namespace {

template<typename T> NSRef<T> contentsOfFile(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    auto data = NSData::dataWithContentsOfFile(path, error);
    if (!data)
        return nullptr;
    NSId top =
        NSPropertyListSerialization::propertyListWithData(data, NSPropertyListImmutable, nullptr, error);
    auto result = NSCast<T>(top);
    if (top && !result && error)
        *error = NSError::errorWithDomain(NSCocoaErrorDomain, NSPropertyListReadCorruptError,
            NSDictionary::of(
                { { NSLocalizedDescriptionKey, "the top of the property list is of another type." } }));
    return result;
}

bool write(const NSId& propertyList, const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error)
{
    auto data = NSPropertyListSerialization::dataWithPropertyList(
        propertyList, NSPropertyListXMLFormat_v1_0, 0, error);
    return data && data->writeToFile(path, atomically, error);
}

}

NSRef<NSDictionary> NSDictionary::dictionaryWithContentsOfFile(
    const NSRef<NSString>& path, NSRef<NSError>* error)
{
    return contentsOfFile<NSDictionary>(path, error);
}

bool NSDictionary::writeToFile(const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error) const
{
    return write(NSShare(const_cast<NSDictionary*>(this)), path, atomically, error);
}

NSRef<NSArray> NSArray::arrayWithContentsOfFile(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    return contentsOfFile<NSArray>(path, error);
}

bool NSArray::writeToFile(const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error) const
{
    return write(NSShare(const_cast<NSArray*>(this)), path, atomically, error);
}
