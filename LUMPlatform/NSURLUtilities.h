#pragma once

#include "LUMPlatform/NSString.h"

/// Text in URLs. Every string answers these as dynamic calls too. A null text answers null. Threads: any.
///
///     auto name = NSURLUtilities::stringByAddingPercentEscapesUsingEncoding("a b", NSUTF8StringEncoding);
///     auto url = NSURL::URLWithString(name, NSURL::fileURLWithPath("/home/me/")); // file:///home/me/a%20b
namespace NSURLUtilities {

/// Escapes the bytes of the text that may not stand in a URL. "%" is one of them, so what is escaped already
/// is escaped again; "/", ":", ";", "?", "@" and "&" are not. Null for an encoding other than UTF-8 and for
/// text with half a surrogate pair.
/// Selector: stringByAddingPercentEscapesUsingEncoding:
NS_EXPORT NSRef<NSString> stringByAddingPercentEscapesUsingEncoding(
    const NSRef<NSString>& text, NSStringEncoding encoding);
/// The reverse. Null also for "%" without two hexadecimal digits, and when the bytes are no UTF-8.
/// Selector: stringByReplacingPercentEscapesUsingEncoding:
NS_EXPORT NSRef<NSString> stringByReplacingPercentEscapesUsingEncoding(
    const NSRef<NSString>& text, NSStringEncoding encoding);

}
