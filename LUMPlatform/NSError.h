#pragma once

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSStringConstant.h"

#include <cstdint>

/// The result of a call that reports failure by a number; 0 is success.
using OSStatus = std::int32_t;

/// Why something failed in the outside world: a domain, a code within it, and further information.
///
/// An operation that can fail takes `NSRef<NSError>* error = nullptr` as its last argument and stores one
/// there on failure, unless the pointer is null. Misuse by the caller is an NSException instead. Immutable.
/// Threads: any.
///
///     NSRef<NSError> error;
///     auto data = NSData::dataWithContentsOfFile("/etc/hostname", &error);
///     if (!data)
///         std::cerr << error->localizedDescription() << '\n';
class NS_EXPORT NSError : public NSObject {
public:
    static const NSClass& classObject();

    /// A null `userInfo` counts as an empty one. Raises NSInvalidArgumentException for a null domain.
    /// Selector: errorWithDomain:code:userInfo:
    static NSRef<NSError> errorWithDomain(
        const NSRef<NSString>& domain, NSInteger code, const NSRef<NSDictionary>& userInfo = nullptr);

    NSRef<NSString> domain() const; ///< Selector: domain
    NSInteger code() const { return mCode; } ///< Selector: code
    NSRef<NSDictionary> userInfo() const; ///< Never null. Selector: userInfo
    /// The text under NSLocalizedDescriptionKey, or one made of the failure reason, domain and code.
    /// Selector: localizedDescription
    NSRef<NSString> localizedDescription() const;
    /// The text under NSLocalizedFailureReasonErrorKey, or null.
    /// Selector: localizedFailureReason
    NSRef<NSString> localizedFailureReason() const;

    bool isEqual(const NSId& other) const override; ///< Equal domain, code and information.
    NSUInteger hash() const override;
    /// "Error Domain=... Code=... "description" UserInfo={...}"
    NSRef<NSString> description() const override;
    NSId copy() const override; ///< Itself.

protected:
    NSError(const NSRef<NSString>& domain, NSInteger code, const NSRef<NSDictionary>& userInfo);
    ~NSError() override;

private:
    NSRef<NSString> mDomain;
    NSInteger mCode;
    NSRef<NSDictionary> mUserInfo;
};

/// The domain of errors whose code is an OSStatus.
extern NS_EXPORT const NSStringConstant NSOSStatusErrorDomain;
/// User information: what failed, in a sentence for the user.
extern NS_EXPORT const NSStringConstant NSLocalizedDescriptionKey;
/// User information: why it failed.
extern NS_EXPORT const NSStringConstant NSLocalizedFailureReasonErrorKey;
