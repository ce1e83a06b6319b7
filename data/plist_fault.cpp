#include "data/plist_fault.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

std::uint32_t lum::identityOf(const NSObject& object)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(&object));
}

NSRef<NSString> lum::classNameOf(const NSObject& object)
{
    return object.isa().name();
}

void lum::raiseNotPlistable(const NSId& object)
{
    throw NSException(LUMNonPlistTypeException,
        NSString::stringWithFormat(
            "object: %X of class: %@ can not be written to plist", identityOf(*object), classNameOf(*object)),
        NSDictionary::of({ { "object", object } }));
}

void lum::requireStringAsKey(const NSId& key, const NSObject& dictionary)
{
    if (!NSDowncast<NSString>(key.get()))
        throw NSException(LUMNonPlistTypeException,
            NSString::stringWithFormat("key: %X of class: %@ in dictionary: %X can not be written to plist",
                identityOf(*key), classNameOf(*key), identityOf(dictionary)));
}

// Deliberate: the reason lacks a word, and those who look for it in logs know it that way.
void lum::raiseNotSerializable(const NSObject& object)
{
    throw NSException(LUMSerializedPlistException,
        NSString::stringWithFormat("Unable serialize object:%X of class:%@ using dataWithPropertyList:",
            identityOf(object), classNameOf(object)));
}
