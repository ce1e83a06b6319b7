#include "LUMPlatform/NSError.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

const NSStringConstant NSOSStatusErrorDomain("NSOSStatusErrorDomain");
const NSStringConstant NSLocalizedDescriptionKey("NSLocalizedDescription");
const NSStringConstant NSLocalizedFailureReasonErrorKey("NSLocalizedFailureReason");

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"domain", &NSError::domain>(),
    NSMethodOf<"code", &NSError::code>(),
    NSMethodOf<"userInfo", &NSError::userInfo>(),
    NSMethodOf<"localizedDescription", &NSError::localizedDescription>(),
    NSMethodOf<"localizedFailureReason", &NSError::localizedFailureReason>(),
};

}

const NSClass& NSError::classObject()
{
    static const NSClass& type = NSClass::define("NSError", &NSObject::classObject(), kMethods);
    return type;
}

NSError::NSError(const NSRef<NSString>& domain, NSInteger code, const NSRef<NSDictionary>& userInfo)
    : mDomain(domain), mCode(code), mUserInfo(NSDictionary::dictionaryWithDictionary(userInfo))
{
}

NSError::~NSError() = default;

NSRef<NSError> NSError::errorWithDomain(
    const NSRef<NSString>& domain, NSInteger code, const NSRef<NSDictionary>& userInfo)
{
    if (!domain)
        throw NSException(NSInvalidArgumentException, "errorWithDomain:code:userInfo: the domain is null");
    return NSMake<NSError>(NSCast<NSString>(domain->copy()), code, userInfo);
}

NSRef<NSString> NSError::domain() const
{
    return mDomain;
}

NSRef<NSDictionary> NSError::userInfo() const
{
    return mUserInfo;
}

NSRef<NSString> NSError::localizedDescription() const
{
    if (auto text = mUserInfo->objectForKey<NSString>(NSLocalizedDescriptionKey))
        return text;
    std::string text = "The operation couldn’t be completed. ";
    if (auto reason = localizedFailureReason())
        return text + reason->utf8();
    return text + "(" + mDomain->utf8() + " error " + std::to_string(mCode) + ".)";
}

NSRef<NSString> NSError::localizedFailureReason() const
{
    return mUserInfo->objectForKey<NSString>(NSLocalizedFailureReasonErrorKey);
}

bool NSError::isEqual(const NSId& other) const
{
    auto error = NSCast<NSError>(other);
    return error && error->mCode == mCode && mDomain->isEqual(error->mDomain)
        && mUserInfo->isEqual(error->mUserInfo);
}

NSUInteger NSError::hash() const
{
    return mDomain->hash() ^ static_cast<NSUInteger>(mCode);
}

NSRef<NSString> NSError::description() const
{
    std::string text = "Error Domain=" + mDomain->utf8() + " Code=" + std::to_string(mCode) + " \""
        + localizedDescription()->utf8() + "\"";
    if (mUserInfo->count() > 0)
        text += " UserInfo=" + mUserInfo->description()->utf8();
    return text;
}

NSId NSError::copy() const
{
    return NSShare(const_cast<NSError*>(this));
}
