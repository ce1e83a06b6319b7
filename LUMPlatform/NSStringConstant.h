#pragma once

#include "LUMPlatform/NSObject.h"

#include <atomic>
#include <string_view>

/// A global constant text: usable wherever a string or an object is wanted, at any time, from any thread.
///
/// It is initialised by the compiler, so no order of initialisation matters, and its string, made at first
/// use, lives as long as the process. Made from null it is a null string.
///
///     extern const NSStringConstant TrackDidEndNotification; // in a header, and in a source:
///     constinit const NSStringConstant TrackDidEndNotification("TrackDidEndNotification");
class NS_EXPORT NSStringConstant {
public:
    constexpr explicit NSStringConstant(const char* text) : mText(text) { }
    NSStringConstant(const NSStringConstant&) = delete;
    NSStringConstant& operator=(const NSStringConstant&) = delete;

    /// Always the same string object.
    NSRef<NSString> string() const;
    operator NSRef<NSString>() const;
    operator NSId() const;
    /// The text in UTF-8; empty for a null constant.
    constexpr std::string_view text() const { return mText ? std::string_view(mText) : std::string_view(); }

private:
    const char* mText;
    mutable std::atomic<NSString*> mString { nullptr };
};
