#pragma once

#include "LUMPlatform/NSObject.h"
#include "LUMPlatform/NSStringConstant.h"

#include <exception>

class NSDictionary;

/// Raised at once when the caller is wrong: a name to tell it by, a reason in words, and optional
/// information. Failures of the outside world are NSError objects instead.
///
///     throw NSException(NSRangeException, "index 7 is past the last of 3 elements");
///
/// A C++ exception, caught by reference; copying shares its objects and never fails. Threads: may cross them.
class NS_EXPORT NSException : public std::exception {
public:
    NSException(const NSRef<NSString>& name, const NSRef<NSString>& reason);
    NSException(
        const NSRef<NSString>& name, const NSRef<NSString>& reason, const NSRef<NSDictionary>& userInfo);
    NSException(const NSException&) noexcept;
    NSException& operator=(const NSException&) noexcept;
    ~NSException() override;

    NSRef<NSString> name() const;
    NSRef<NSString> reason() const;
    NSRef<NSDictionary> userInfo() const; ///< Null when it carries none.
    NSRef<NSString> description() const; ///< The reason.
    /// "name: reason" in UTF-8; lives as long as the exception.
    const char* what() const noexcept override;

private:
    class Content;
    NSRef<Content> mContent; // shared by all copies
};

/// An argument is null, or of a kind that the operation does not take; or nobody answers a selector.
extern NS_EXPORT const NSStringConstant NSInvalidArgumentException;
/// An index or a range does not lie inside, or a number does not fit.
extern NS_EXPORT const NSStringConstant NSRangeException;
/// An object is used in a state in which it cannot be, as a lock that the caller does not hold.
extern NS_EXPORT const NSStringConstant NSInternalInconsistencyException;
/// A collection was changed while a loop went over it.
extern NS_EXPORT const NSStringConstant NSGenericException;
/// There is no memory for what is asked.
extern NS_EXPORT const NSStringConstant NSMallocException;
