#include "LUMFoundation/LUMNotificationCenter.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSSend.h"

#include <typeinfo>

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
    if (typeid(*this) == typeid(NSInstance<LUMNotificationCenter>))
        return replaceObserver(observer, selector, name, object);
    // A derived class may have its own way of removing, as a member or in its method table.
    static const NSSelector removal("removeObserver:name:object:");
    if (observer && selector)
        NSSend(*this, removal, observer, name, object);
    NSNotificationCenter::addObserver(observer, selector, name, object);
}
