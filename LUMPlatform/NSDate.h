#pragma once

#include "LUMPlatform/NSObject.h"

/// A length of time in seconds.
using NSTimeInterval = double;

/// Seconds from 1970-01-01 00:00:00 UTC to the reference date, 2001-01-01 00:00:00 UTC.
inline constexpr NSTimeInterval NSTimeIntervalSince1970 = 978307200.0;

/// An immutable point in time, in seconds since the reference date. Threads: any.
///
///     auto start = NSDate::date();
///     NSTimeInterval taken = NSDate::date()->timeIntervalSinceDate(start);
class NS_EXPORT NSDate : public NSObject {
public:
    static const NSClass& classObject();

    static NSRef<NSDate> date(); ///< Now, by the wall clock. Selector: date
    /// Selector: dateWithTimeIntervalSinceReferenceDate:
    static NSRef<NSDate> dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds);

    NSTimeInterval timeIntervalSinceReferenceDate() const; ///< Selector: timeIntervalSinceReferenceDate
    /// Negative when this date is the earlier one. Null raises NSInvalidArgumentException.
    /// Selector: timeIntervalSinceDate:
    NSTimeInterval timeIntervalSinceDate(const NSRef<NSDate>& other) const;
    /// Ascending when this date is the earlier one. Null raises NSInvalidArgumentException.
    /// Selector: compare:
    NSComparisonResult compare(const NSRef<NSDate>& other) const;

    bool isEqual(const NSId& other) const override; ///< Exactly the same time.
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< "2001-01-01 00:00:00 +0000", always in UTC.
    NSId copy() const override; ///< Itself.

protected:
    explicit NSDate(NSTimeInterval seconds) : mSeconds(seconds) { }
    ~NSDate() override;

private:
    NSTimeInterval mSeconds;
};
