#include "LUMPlatform/NSPropertyListSerialization.h"
#include "tests/platform/proplists/property_list_generator.h"
#include "tests/platform/proplists/vector_objects.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

NSId throughFormat(const NSId& object, NSPropertyListFormat format)
{
    return NSPropertyListSerialization::propertyListWithData(
        NSPropertyListSerialization::dataWithPropertyList(object, format));
}

RC_GTEST_PROP(PropertyListRoundTrip, BinaryKeepsValuesAndTypes, ())
{
    const NSId object = *propertyLists(3, false);
    const NSId again = throughFormat(object, NSPropertyListBinaryFormat_v1_0);
    RC_ASSERT(NSEqual(again, object));
    RC_ASSERT(typesOf(again) == typesOf(object));
}

RC_GTEST_PROP(PropertyListRoundTrip, XmlKeepsValuesAndTypes, ())
{
    const NSId object = *propertyLists(3, true);
    const NSId again = throughFormat(object, NSPropertyListXMLFormat_v1_0);
    RC_ASSERT(NSEqual(again, object));
    RC_ASSERT(typesOf(again) == typesOf(object));
}

RC_GTEST_PROP(PropertyListRoundTrip, EqualContentGivesEqualBytes, ())
{
    const NSId object = *propertyLists(3, true);
    for (auto format : { NSPropertyListBinaryFormat_v1_0, NSPropertyListXMLFormat_v1_0 }) {
        auto written = NSPropertyListSerialization::dataWithPropertyList(object, format);
        auto again = NSPropertyListSerialization::dataWithPropertyList(throughFormat(object, format), format);
        RC_ASSERT(written->isEqualToData(again));
    }
}

}
