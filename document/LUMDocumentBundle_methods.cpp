#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "LUMPlatform/NSURL.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"fileRef", &LUMDocumentBundle::fileRef>(),
    NSMethodOf<"url", &LUMDocumentBundle::url>(),
    NSMethodOf<"path", &LUMDocumentBundle::path>(),
    NSMethodOf<"setCreatorCode:", &LUMDocumentBundle::setCreatorCode>(),
    NSMethodOf<"creatorCode", &LUMDocumentBundle::creatorCode>(),
    NSMethodOf<"setTypeCode:", &LUMDocumentBundle::setTypeCode>(),
    NSMethodOf<"typeCode", &LUMDocumentBundle::typeCode>(),
    NSMethodOf<"savePkgInfo", &LUMDocumentBundle::savePkgInfo>(),
    NSMethodOf<"loadPkgInfo", &LUMDocumentBundle::loadPkgInfo>(),
    NSMethodOf<"setDictionary:error:", &LUMDocumentBundle::setDictionary>(),
    NSMethodOf<"dictionaryError:", &LUMDocumentBundle::dictionaryError>(),
    NSMethodOf<"dictionaryForDomain:error:", &LUMDocumentBundle::dictionaryForDomain>(),
    NSMethodOf<"setDictionary:forDomain:error:", &LUMDocumentBundle::setDictionaryForDomain>(),
    NSMethodOf<"pathForDictionaryWithDomain:", &LUMDocumentBundle::pathForDictionaryWithDomain>(),
    NSMethodOf<"isEqualTo:", &LUMDocumentBundle::isEqualTo>(),
    NSMethodOf<"saveObject:withKey:error:", &LUMDocumentBundle::saveObject>(),
    NSMethodOf<"decodeObjectWithKey:error:", &LUMDocumentBundle::decodeObjectWithKey>(),
    NSMethodOf<"pathForObjectWithKey:domain:createDirectories:error:",
        &LUMDocumentBundle::pathForObjectWithKey>(),
    NSMethodOf<"saveObject:withKey:domain:error:", &LUMDocumentBundle::saveObjectDomain>(),
    NSMethodOf<"decodeObjectWithKey:domain:error:", &LUMDocumentBundle::decodeObjectWithKeyDomain>(),
    NSMethodOf<"decodeObjectWithKey:delegate:error:", &LUMDocumentBundle::decodeObjectWithKeyDelegate>(),
    NSMethodOf<"urlForResource:ofType:inDirectory:createDirectory:error:",
        &LUMDocumentBundle::urlForResource>(),
    NSMethodOf<"copyResource:toDirectory:rename:error:", &LUMDocumentBundle::copyResource>(),
    NSMethodOf<"moveResource:toDirectory:rename:error:", &LUMDocumentBundle::moveResource>(),
    NSMethodOf<"removeResource:ofType:inDirectory:error:", &LUMDocumentBundle::removeResource>(),
    NSMethodOf<"urlForResource:ofType:inDirectory:domain:createDirectory:error:",
        &LUMDocumentBundle::urlForResourceDomain>(),
    NSMethodOf<"resourceTypesInDomain:error:", &LUMDocumentBundle::resourceTypesInDomain>(),
    NSMethodOf<"urlsForResourcesOfType:inDirectory:domain:error:",
        &LUMDocumentBundle::urlsForResourcesOfType>(),
    NSMethodOf<"copyResource:toDirectory:rename:domain:error:", &LUMDocumentBundle::copyResourceDomain>(),
    NSMethodOf<"moveResource:toDirectory:rename:domain:error:", &LUMDocumentBundle::moveResourceDomain>(),
    NSMethodOf<"removeResource:ofType:inDirectory:domain:error:", &LUMDocumentBundle::removeResourceDomain>(),
    NSMethodOf<"presentDomains:", &LUMDocumentBundle::presentDomains>(),
    NSMethodOf<"removeDomain:error:", &LUMDocumentBundle::removeDomain>(),
    NSMethodOf<"removeNonDocumentDomains:", &LUMDocumentBundle::removeNonDocumentDomains>(),
};

}

const NSClass& LUMDocumentBundle::classObject()
{
    static const NSClass& type = NSClass::define("LUMDocumentBundle", &NSObject::classObject(), kMethods);
    return type;
}
