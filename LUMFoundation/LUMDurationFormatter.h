#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSFormatter.h"

/// Shows a number of seconds as a clock does: "01:05", "1:02:05", "01:05.25", "-01:05s".
///
///     auto formatter = NSMake<LUMDurationFormatter>();
///     auto time = formatter->stringForObjectValue(NSNumber::numberWithDouble(65.5)); // "01:06"
///
/// It reads nothing: for display only. The options are asked of its own accessors, so a subclass may override
/// them. Threads: any, once the options are set; setting them, one at a time.
class LUM_EXPORT LUMDurationFormatter : public NSFormatter {
public:
    static const NSClass& classObject();

    /// Minutes without a leading zero where no hours are. At first false.
    /// Selector: setAllowsOneZero:
    virtual void setAllowsOneZero(bool allows);
    virtual bool allowsOneZero() const; ///< Selector: allowsOneZero

    /// The text for exactly 0; otherwise that is null. At first true.
    /// Selector: setDisplaysZero:
    virtual void setDisplaysZero(bool displays);
    virtual bool displaysZero() const; ///< Selector: displaysZero

    /// The hours below one hour, too. At first false.
    /// Selector: setAlwaysShowHours:
    virtual void setAlwaysShowHours(bool shows);
    virtual bool alwaysShowHours() const; ///< Selector: alwaysShowHours

    /// Stored, and without effect: minutes are always written. At first false.
    /// Selector: setAlwaysShowMinutes:
    virtual void setAlwaysShowMinutes(bool shows);
    virtual bool alwaysShowMinutes() const; ///< Selector: alwaysShowMinutes

    /// Two digits after a point: hundredths of a second, in spite of the name. Without them the seconds are
    /// rounded, half a second up. At first false.
    /// Selector: setIncludeMilliseconds:
    virtual void setIncludeMilliseconds(bool includes);
    virtual bool includeMilliseconds() const; ///< Selector: includeMilliseconds

    /// An "s" after the seconds, never together with hundredths. At first false.
    /// Selector: setShowsLastUnitLabel:
    virtual void setShowsLastUnitLabel(bool shows);
    virtual bool showsLastUnitLabel() const; ///< Selector: showsLastUnitLabel

    /// What stands after the hours and after the minutes; a copy is kept. At first ":". Null shows as
    /// "(null)".
    /// Selector: setSeparator:
    virtual void setSeparator(const NSRef<NSString>& separator);
    virtual NSRef<NSString> separator() const; ///< Selector: separator

    /// The text for the value's floatValue, to the precision of a float; null only for 0 without
    /// displaysZero. Null, or an object without floatValue, counts as 0. From 2^32 seconds on, infinity
    /// included, it shows 1193046:28:15, the most that counts; not-a-number shows 00:00.
    /// Selector: stringForObjectValue:
    NSRef<NSString> stringForObjectValue(const NSId& value) const override;

protected:
    LUMDurationFormatter();
    ~LUMDurationFormatter() override;

private:
    bool mAllowsOneZero = false;
    bool mAlwaysShowHours = false;
    bool mAlwaysShowMinutes = false;
    bool mIncludeMilliseconds = false;
    bool mDisplaysZero = true;
    bool mShowsLastUnitLabel = false;
    NSRef<NSString> mSeparator;
};
