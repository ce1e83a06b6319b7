#include "LUMPlatform/NSString.h"

#include "LUMPlatform/NSClass.h"

const NSClass& NSString::classObject()
{
    static const NSClass& type = NSClass::define("NSString", &NSObject::classObject(), {});
    return type;
}

NSRef<NSString> NSString::stringWithUTF8String(std::string_view text)
{
    return NSMake<NSString>(text);
}

bool NSString::isEqual(const NSId& other) const
{
    auto string = NSCast<NSString>(other);
    return string && string->mText == mText;
}

NSUInteger NSString::hash() const
{
    return std::hash<std::string> {}(mText);
}

NSRef<NSString> NSString::description() const
{
    return NSShare(const_cast<NSString*>(this));
}
