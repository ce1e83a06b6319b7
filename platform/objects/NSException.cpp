#include "LUMPlatform/NSException.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"

const NSStringConstant NSInvalidArgumentException("NSInvalidArgumentException");
const NSStringConstant NSRangeException("NSRangeException");
const NSStringConstant NSInternalInconsistencyException("NSInternalInconsistencyException");
const NSStringConstant NSGenericException("NSGenericException");
const NSStringConstant NSMallocException("NSMallocException");

class NSException::Content : public NSObject {
public:
    const NSRef<NSString> name;
    const NSRef<NSString> reason;
    const NSRef<NSDictionary> userInfo;
    const std::string what;

protected:
    Content(
        const NSRef<NSString>& name_, const NSRef<NSString>& reason_, const NSRef<NSDictionary>& userInfo_)
        : name(name_)
        , reason(reason_)
        , userInfo(userInfo_)
        , what((name ? name->utf8() : "") + ": " + (reason ? reason->utf8() : ""))
    {
    }
};

NSException::NSException(const NSRef<NSString>& name, const NSRef<NSString>& reason)
    : NSException(name, reason, nullptr)
{
}

NSException::NSException(
    const NSRef<NSString>& name, const NSRef<NSString>& reason, const NSRef<NSDictionary>& userInfo)
    : mContent(NSMake<Content>(name, reason, userInfo))
{
}

NSException::NSException(const NSException&) noexcept = default;
NSException& NSException::operator=(const NSException&) noexcept = default;
NSException::~NSException() = default;

NSRef<NSString> NSException::name() const
{
    return mContent->name;
}
NSRef<NSString> NSException::reason() const
{
    return mContent->reason;
}
NSRef<NSDictionary> NSException::userInfo() const
{
    return mContent->userInfo;
}
NSRef<NSString> NSException::description() const
{
    return mContent->reason;
}
const char* NSException::what() const noexcept
{
    return mContent->what.c_str();
}
