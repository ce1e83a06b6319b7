#include "LUMFoundation/LUMNotificationCenter.h"

#include "LUMPlatform/NSClass.h"

const NSClass& LUMNotificationCenter::classObject()
{
    static const NSClass& type =
        NSClass::define("LUMNotificationCenter", &NSNotificationCenter::classObject(), {});
    return type;
}

// Deliberate: null means any in the removal of what is replaced.
void LUMNotificationCenter::addObserver(
    const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object)
{
    replaceObserver(observer, selector, name, object);
}
