#pragma once

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "fuzz/require.h"

/// What a reader made of the bytes is written in binary, read again and written once more, which gives the
/// same bytes: these tell apart what differs in value or type. In XML, which cannot hold all of it, the same
/// holds for what can be written.
inline void requireThatItComesBack(const NSId& propertyList)
{
    for (auto format : { NSPropertyListBinaryFormat_v1_0, NSPropertyListXMLFormat_v1_0 }) {
        auto written = NSPropertyListSerialization::dataWithPropertyList(propertyList, format);
        require(written || format == NSPropertyListXMLFormat_v1_0);
        if (!written)
            continue;
        NSId again = NSPropertyListSerialization::propertyListWithData(written);
        require(static_cast<bool>(again));
        auto writtenAgain = NSPropertyListSerialization::dataWithPropertyList(again, format);
        require(writtenAgain && writtenAgain->isEqualToData(written));
    }
}
