#pragma once

#include "LUMPlatform/NSString.h"

// Where everything is in a bundle, given the path of that. Each answers null for a null bundle.
namespace lum {

/// The bundle as seen from itself.
inline constexpr const char* kInside = ".";

/// Whether the domain is the document's own: null, or of that name.
bool isDocumentDomain(const NSRef<NSString>& domain);

NSRef<NSString> contentsIn(const NSRef<NSString>& bundle);
NSRef<NSString> packageInfoIn(const NSRef<NSString>& bundle);
NSRef<NSString> dictionaryIn(const NSRef<NSString>& bundle, const NSRef<NSString>& domain);
NSRef<NSString> objectIn(
    const NSRef<NSString>& bundle, const NSRef<NSString>& domain, const NSRef<NSString>& key);

}
