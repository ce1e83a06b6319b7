#include "LUMPlatform/NSStringConstant.h"

#include "LUMPlatform/NSString.h"
#include "platform/objects/live_objects.h"

NSRef<NSString> NSStringConstant::string() const
{
    if (!mText)
        return nullptr;
    NSString* string = mString.load(std::memory_order_acquire);
    if (!string) {
        NSRef<NSString> made = NSString::stringWithUTF8String(mText);
        // Another thread may have been first; then its string is the one, and ours goes.
        if (mString.compare_exchange_strong(string, made.get(), std::memory_order_acq_rel))
            string = platform::makeImmortal(std::move(made));
    }
    return NSShare(string);
}

NSStringConstant::operator NSRef<NSString>() const
{
    return string();
}

NSStringConstant::operator NSId() const
{
    return string();
}
