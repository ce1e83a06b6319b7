#pragma once

#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSURL.h"
#include "platform/values/url_text.h"

struct NSURL::Content {
    NSRef<NSString> relative;
    NSRef<NSURL> base;
    NSRef<NSString> absolute; // the very `relative` without a base
    platform::UrlParts parts; // views into `absolute`
};
