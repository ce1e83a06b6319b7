// What answers dynamic calls to a handle, and the deprecated operations.
#include "LUMFoundation/LUMFileRefEnumerator.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSImage.h"
#include "LUMPlatform/NSURL.h"
#include "core/statuses.h"
#include "fileref/alias_data.h"

namespace {

OSStatus fillSpec(const LUMFileRef& fileRef, FSSpec* spec)
{
    return spec ? FSGetCatalogInfo(*fileRef.fsRef(), kFSCatInfoNone, nullptr, spec)
                : lum::kStatusBadParameter;
}

NSRef<NSData> aliasData(const LUMFileRef& fileRef)
{
    return lum::aliasDataOf(*fileRef.fsRef());
}

// The selectors without an error.

NSRef<NSArray> children(const LUMFileRef& fileRef)
{
    return fileRef.childrenError();
}

NSRef<LUMFileRef> childWithName(const LUMFileRef& fileRef, const NSRef<NSString>& name)
{
    return fileRef.childWithName(name);
}

NSRef<LUMFileRef> createChild(const LUMFileRef& fileRef, const NSRef<NSString>& name, bool asDirectory)
{
    return fileRef.createChildWithName(name, asDirectory);
}

NSRef<LUMFileRef> createChildIfNeeded(
    const LUMFileRef& fileRef, const NSRef<NSString>& name, bool asDirectory)
{
    return fileRef.createChildIfNeededWithName(name, asDirectory);
}

bool rename(LUMFileRef& fileRef, const NSRef<NSString>& name)
{
    return fileRef.renameWithName(name);
}

/// The zone, which means nothing, is not asked for.
NSId copyWithZone(const LUMFileRef& fileRef, void* /*zone*/)
{
    return fileRef.copy();
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"isEqualTo:", &LUMFileRef::isEqualTo>(),
    NSMethodOf<"compare:", &LUMFileRef::compare>(),
    NSMethodOf<"isAlias", &LUMFileRef::isAlias>(),
    NSMethodOf<"aliasFileRef", &LUMFileRef::aliasFileRef>(),
    NSMethodOf<"path", &LUMFileRef::path>(),
    NSMethodOf<"fileExists", &LUMFileRef::fileExists>(),
    NSMethodOf<"url", &LUMFileRef::url>(),
    NSMethodOf<"renameWithName:error:", &LUMFileRef::renameWithName>(),
    NSMethodOf<"name", &LUMFileRef::name>(),
    NSMethodOf<"baseName", &LUMFileRef::baseName>(),
    NSMethodOf<"pathExtension", &LUMFileRef::pathExtension>(),
    NSMethodOf<"displayName", &LUMFileRef::displayName>(),
    NSMethodOf<"isDirectory", &LUMFileRef::isDirectory>(),
    NSMethodOf<"isDescendentOf:", &LUMFileRef::isDescendentOf>(),
    NSMethodOf<"isChildOf:", &LUMFileRef::isChildOf>(),
    NSMethodOf<"isParentOf:", &LUMFileRef::isParentOf>(),
    NSMethodOf<"parent", &LUMFileRef::parent>(),
    NSMethodOf<"childrenError:", &LUMFileRef::childrenError>(),
    NSMethodOf<"childEnumerator", &LUMFileRef::childEnumerator>(),
    NSMethodOf<"createChildWithName:asDirectory:error:", &LUMFileRef::createChildWithName>(),
    NSMethodOf<"childWithName:error:", &LUMFileRef::childWithName>(),
    NSMethodOf<"createChildIfNeededWithName:asDirectory:error:", &LUMFileRef::createChildIfNeededWithName>(),
    NSMethodOf<"fsRef", &LUMFileRef::fsRef>(),
    NSMethodOf<"descriptionWithLocale:", &LUMFileRef::descriptionWithLocale>(),
    NSMethodOf<"attributes", &LUMFileRef::attributes>(),
    NSMethodOf<"setAttributes:", &LUMFileRef::setAttributes>(),
    NSMethodOf<"fileInfo", &LUMFileRef::fileInfo>(),
    NSMethodOf<"setFileInfo:", &LUMFileRef::setFileInfo>(),
    NSMethodOf<"encodeWithCoder:", &LUMFileRef::encodeWithCoder>(),
    NSMethodOf<"copyWithZone:", &copyWithZone>(),
    NSMethodOf<"lock", &LUMFileRef::lock>(),
    NSMethodOf<"unlock", &LUMFileRef::unlock>(),
    NSMethodOf<"icon", &LUMFileRef::icon>(),
    NSMethodOf<"isInTrash", &LUMFileRef::isInTrash>(),
    NSMethodOf<"aliasData", &aliasData>(),
    NSMethodOf<"getFSSpec:", &fillSpec>(),
    NSMethodOf<"children", &children>(),
    NSMethodOf<"childWithName:", &childWithName>(),
    NSMethodOf<"createChildWithName:asDirectory:", &createChild>(),
    NSMethodOf<"createChildIfNeededWithName:asDirectory:", &createChildIfNeeded>(),
    NSMethodOf<"renameWithName:", &rename>(),
};

}

const NSClass& LUMFileRef::classObject()
{
    static const NSClass& type = NSClass::define("LUMFileRef", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<NSData> LUMFileRef::aliasData() const
{
    return ::aliasData(*this);
}

OSStatus LUMFileRef::getFSSpec(FSSpec* spec) const
{
    return fillSpec(*this, spec);
}

NSRef<NSArray> LUMFileRef::children() const
{
    return childrenError();
}
