#pragma once

#include "LUMPlatform/NSString.h"

/// The folder for temporary files, with a slash at its end: what TMPDIR tells if that is an absolute path of
/// a folder, else "/tmp/". Threads: any.
///
///     auto scratch = NSTemporaryDirectory()->stringByAppendingPathComponent("scratch");
NS_EXPORT NSRef<NSString> NSTemporaryDirectory();

/// Paths and the disk. Every string answers these as dynamic calls too. Threads: any.
///
///     auto real = NSPathUtilities::stringByResolvingSymlinksInPath("~/Link to takes");
namespace NSPathUtilities {

/// The absolute path without symbolic links, as far as it exists, a leading tilde expanded first; "." and
/// ".." are worked out on the way. A relative path starts at the current folder. The path as it is when links
/// go round in circles; null for null, empty for empty.
/// Selector: stringByResolvingSymlinksInPath
NS_EXPORT NSRef<NSString> stringByResolvingSymlinksInPath(const NSRef<NSString>& path);

}
