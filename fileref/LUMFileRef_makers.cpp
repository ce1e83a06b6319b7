// LUMFileRef's own class operations are those that a subclass gets.
#include "LUMFoundation/LUMFileRefSubclass.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSURL.h"

using Makers = LUMFileRefSubclass<LUMFileRef>;

NSRef<LUMFileRef> LUMFileRef::fileRefWithPath(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    return Makers::fileRefWithPath(path, error);
}

NSRef<LUMFileRef> LUMFileRef::fileRefWithPathResolveAlias(
    const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error)
{
    return Makers::fileRefWithPathResolveAlias(path, resolveAlias, error);
}

NSRef<LUMFileRef> LUMFileRef::fileRefWithFSRef(const FSRef& ref, NSRef<NSError>* error)
{
    return Makers::fileRefWithFSRef(ref, error);
}

NSRef<LUMFileRef> LUMFileRef::fileRefWithFSRefResolveAlias(
    const FSRef& ref, bool resolveAlias, NSRef<NSError>* error)
{
    return Makers::fileRefWithFSRefResolveAlias(ref, resolveAlias, error);
}

NSRef<LUMFileRef> LUMFileRef::fileRefWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error)
{
    return Makers::fileRefWithURL(url, error);
}

NSRef<LUMFileRef> LUMFileRef::initWithFSRef(const FSRef& ref, NSRef<NSError>* error)
{
    return Makers::initWithFSRef(ref, error);
}

NSRef<LUMFileRef> LUMFileRef::initWithFSRefResolveAlias(
    const FSRef& ref, bool resolveAlias, NSRef<NSError>* error)
{
    return Makers::initWithFSRefResolveAlias(ref, resolveAlias, error);
}

NSRef<LUMFileRef> LUMFileRef::initWithPath(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    return Makers::initWithPath(path, error);
}

NSRef<LUMFileRef> LUMFileRef::initWithPathResolveAlias(
    const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error)
{
    return Makers::initWithPathResolveAlias(path, resolveAlias, error);
}

NSRef<LUMFileRef> LUMFileRef::initWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error)
{
    return Makers::initWithURL(url, error);
}

NSRef<LUMFileRef> LUMFileRef::initWithCoder(NSCoder& coder)
{
    return Makers::initWithCoder(coder);
}

NSRef<LUMFileRef> LUMFileRef::fileRefWithAliasData(const NSRef<NSData>& data, NSRef<NSError>* error)
{
    return Makers::makeWithAliasData(data, error);
}

NSRef<LUMFileRef> LUMFileRef::initWithAliasData(const NSRef<NSData>& data, NSRef<NSError>* error)
{
    return Makers::makeWithAliasData(data, error);
}
