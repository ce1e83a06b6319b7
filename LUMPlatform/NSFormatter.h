#pragma once

#include "LUMPlatform/NSObject.h"

/// The base of what turns values into text for a field, and text back into values.
///
/// A subclass writes stringForObjectValue(); one whose field can be edited also reads, by getObjectValue().
/// Threads: as the subclass tells.
///
///     NSRef<NSFormatter> formatter = NSMake<TemperatureFormatter>();
///     label->setText(formatter->stringForObjectValue(NSNumber::numberWithDouble(celsius)));
class NS_EXPORT NSFormatter : public NSObject {
public:
    static const NSClass& classObject();

    /// The text to show for a value; null when there is none to show.
    /// Selector: stringForObjectValue:
    virtual NSRef<NSString> stringForObjectValue(const NSId& value) const = 0;

    /// Reads a value out of a text. Here there is no reading: answers false and stores nothing. A subclass
    /// answers whether it could, and stores the value, or else why not; both pointers may be null.
    /// Selector: getObjectValue:forString:errorDescription:
    virtual bool getObjectValue(
        NSId* value, const NSRef<NSString>& string, NSRef<NSString>* errorDescription = nullptr) const;

protected:
    NSFormatter() = default;
    ~NSFormatter() override = default;
};
