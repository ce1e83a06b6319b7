#include "core/method_tables.h"

#include "LUMPlatform/NSClass.h"

namespace {

/// Runs once, when the library is loaded.
[[gnu::constructor]] void giveMethodTables()
{
    NSObject::classObject().extend(lum::mainThreadProxyMethods());
}

}
