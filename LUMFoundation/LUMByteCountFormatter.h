#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSFormatter.h"

#include <cstdint>

/// Shows a number of bytes as "12 KB", "3.4 MB" or "5.6 GB", in multiples of 1024.
///
///     auto size = LUMByteCountFormatter::stringWithByteCount(1'572'864); // "1.5 MB"
///
/// It reads nothing: for display only. Threads: any; it has no state.
class LUM_EXPORT LUMByteCountFormatter : public NSFormatter {
public:
    static const NSClass& classObject();

    /// The text for a count. Below a megabyte it is whole kilobytes, with a half going to the even one: 512
    /// is "0 KB".
    /// Selector: stringWithByteCount:
    static NSRef<NSString> stringWithByteCount(std::uint64_t count);

    /// The text for the value's unsignedLongValue; null, or an object without one, counts as 0. A subclass's
    /// own stringWithByteCount is not used.
    /// Selector: stringForObjectValue:
    NSRef<NSString> stringForObjectValue(const NSId& value) const override;

protected:
    LUMByteCountFormatter() = default;
    ~LUMByteCountFormatter() override = default;
};
