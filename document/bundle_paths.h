#pragma once

#include "LUMPlatform/NSString.h"
#include "core/status_error.h"

#include <filesystem>

namespace lum {

/// A name that leads nowhere but down: not empty, not absolute, and without ".", ".." or a NUL inside, and
/// without half a surrogate pair, which no file's name can hold. It may be a path.
bool staysInside(const NSRef<NSString>& name);
/// The same, for what may be null and is no part of the path then.
bool staysInsideOrNull(const NSRef<NSString>& name);

/// The same, for names of which no two may share a place: without an empty part, as "a/" and "a//b" have one.
bool staysInsideAlone(const NSRef<NSString>& name);
bool staysInsideAloneOrNull(const NSRef<NSString>& name);

/// An extension, escapes in it counted as what they stand for, that makes no other folder out of a name: one
/// without a "/" or a NUL. Null is none.
bool staysInName(const NSRef<NSString>& extension);

/// Whether a path is that of the folder, or of something in it, by its text.
bool isWithin(const std::filesystem::path& folder, const std::filesystem::path& path);
/// A path without the folder that it begins with.
NSRef<NSString> insideOf(const NSRef<NSString>& folder, const NSRef<NSString>& path);

/// Whether `path`, which begins with `folder`, is reached from there without a ".." and without a symbolic
/// link that leads out of it, or nowhere. Its last component may be a link itself where `mayEndInLink`; what
/// is not there stays inside. False for null, and when the system does not tell what is on the way.
bool isReachedInside(const NSRef<NSString>& folder, const NSRef<NSString>& path, bool mayEndInLink = false);

/// Stores what is wrong with a name that does not stay inside (-37), or with a path that is not reached there
/// (-5000).
Failure refuseName(NSRef<NSError>* error);
Failure refuseLink(NSRef<NSError>* error);

/// Whether there is an entry at `path`, be it a link that leads nowhere.
bool isEntryAt(const NSRef<NSString>& path);

/// The text with everything escaped that is not a letter, a digit, "-", ".", "_", "~" or "/"; null for null.
NSRef<NSString> escapedForUrl(const NSRef<NSString>& text);

}
