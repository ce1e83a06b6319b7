// Durations and sizes as people read them.

#include "LUMFoundation/LUMByteCountFormatter.h"
#include "LUMFoundation/LUMDurationFormatter.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"

#include <iostream>

int main()
{
    auto plain = NSMake<LUMDurationFormatter>();
    auto hours = NSMake<LUMDurationFormatter>();
    hours->setAlwaysShowHours(true);
    auto precise = NSMake<LUMDurationFormatter>();
    precise->setIncludeMilliseconds(true); // hundredths
    std::cout << "seconds\tplain\thours\thundredths\n";
    for (double seconds : { 0.0, 9.0, 65.25, 3599.0, 3725.5, 90061.0 }) {
        NSRef<NSNumber> value = seconds;
        std::cout << value << '\t' << plain->stringForObjectValue(value) << '\t'
                  << hours->stringForObjectValue(value) << '\t' << precise->stringForObjectValue(value)
                  << '\n';
    }
    for (std::uint64_t bytes : { 0ULL, 1'024ULL, 1'572'864ULL, 5ULL << 30 })
        std::cout << bytes << " bytes\t" << LUMByteCountFormatter::stringWithByteCount(bytes) << '\n';
    return 0;
}
