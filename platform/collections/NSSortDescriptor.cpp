#include "LUMPlatform/NSSortDescriptor.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"key", &NSSortDescriptor::key>(),
    NSMethodOf<"ascending", &NSSortDescriptor::ascending>(),
    NSMethodOf<"selector", &NSSortDescriptor::selector>(),
    NSMethodOf<"compareObject:toObject:", &NSSortDescriptor::compareObject>(),
};

NSId valueOf(const NSId& object, const NSRef<NSString>& key)
{
    static const NSSelector valueForKeyPath("valueForKeyPath:");
    return key ? NSSend<NSId>(object, valueForKeyPath, key) : object;
}

NSComparisonResult order(NSInteger answer)
{
    if (answer == 0)
        return NSOrderedSame;
    return answer < 0 ? NSOrderedAscending : NSOrderedDescending;
}

}

const NSClass& NSSortDescriptor::classObject()
{
    static const NSClass& type = NSClass::define("NSSortDescriptor", &NSObject::classObject(), kMethods);
    return type;
}

NSSortDescriptor::NSSortDescriptor(const NSRef<NSString>& key, bool ascending, NSSelector selector)
    : mKey(key ? NSCast<NSString>(key->copy()) : nullptr)
    , mSelector(selector ? selector : NSSelector("compare:"))
    , mAscending(ascending)
{
}

NSSortDescriptor::~NSSortDescriptor() = default;

NSRef<NSSortDescriptor> NSSortDescriptor::initWithKey(
    const NSRef<NSString>& key, bool ascending, NSSelector selector)
{
    return NSMake<NSSortDescriptor>(key, ascending, selector);
}

NSRef<NSString> NSSortDescriptor::key() const
{
    return mKey;
}

NSComparisonResult NSSortDescriptor::compareObject(const NSId& first, const NSId& second) const
{
    const NSId a = valueOf(first, mKey);
    const NSId b = valueOf(second, mKey);
    NSComparisonResult result = NSOrderedSame;
    if (a && b)
        result = order(NSSend<NSInteger>(a, mSelector, b));
    else if (a || b)
        result = a ? NSOrderedDescending : NSOrderedAscending;
    return mAscending ? result : order(-result);
}

bool NSSortDescriptor::isEqual(const NSId& other) const
{
    auto descriptor = NSCast<NSSortDescriptor>(other);
    return descriptor && NSEqual(mKey, descriptor->mKey) && mSelector == descriptor->mSelector
        && mAscending == descriptor->mAscending;
}

NSUInteger NSSortDescriptor::hash() const
{
    return (mKey ? mKey->hash() : 0) ^ mSelector.hash();
}

NSId NSSortDescriptor::copy() const
{
    return NSShare(const_cast<NSSortDescriptor*>(this));
}
