#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"

#include <rapidcheck.h>

/// Property lists at random. `isText` keeps to what XML can hold: whole seconds in four-digit years, and
/// printable characters.
inline rc::Gen<NSId> propertyLists(int depth, bool isText)
{
    const auto strings =
        rc::gen::map(rc::gen::container<std::u16string>(
                         isText ? rc::gen::inRange<char16_t>(0x20, 0xD7FF) : rc::gen::arbitrary<char16_t>()),
            [](const std::u16string& text) { return NSId(text); });
    const auto data = rc::gen::map(
        rc::gen::arbitrary<std::vector<std::uint8_t>>(), [](const std::vector<std::uint8_t>& bytes) {
            return NSId(NSData::dataWithBytes(bytes.data(), bytes.size()));
        });
    const auto dates = rc::gen::map(
        rc::gen::inRange<std::int64_t>(-60'000'000'000, 250'000'000'000), [isText](std::int64_t seconds) {
            return NSId(NSDate::dateWithTimeIntervalSinceReferenceDate(
                static_cast<double>(seconds) + (isText ? 0.0 : 0.25)));
        });
    const auto number = [](auto value) { return NSId(value); };
    const auto leaves = rc::gen::oneOf(strings, data, dates, rc::gen::map(rc::gen::arbitrary<bool>(), number),
        rc::gen::map(rc::gen::arbitrary<std::int64_t>(),
            [](std::int64_t value) { return NSId(static_cast<long long>(value)); }),
        rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
            [](std::uint64_t value) { return NSId(static_cast<unsigned long long>(value)); }),
        rc::gen::map(rc::gen::arbitrary<double>(), number));
    if (depth == 0)
        return leaves;
    const auto inner = rc::gen::scale(0.2, propertyLists(depth - 1, isText));
    const auto arrays = rc::gen::map(rc::gen::container<std::vector<NSId>>(inner),
        [](std::vector<NSId> items) { return NSId(NSArray::arrayWithObjects(std::move(items))); });
    const auto dictionaries =
        rc::gen::map(rc::gen::container<std::vector<std::pair<NSId, NSId>>>(rc::gen::pair(strings, inner)),
            [](const std::vector<std::pair<NSId, NSId>>& entries) {
                auto dictionary = NSMutableDictionary::dictionary();
                for (const auto& [key, value] : entries)
                    dictionary->setObject(value, key);
                return dictionary->copy();
            });
    return rc::gen::oneOf(leaves, arrays, dictionaries);
}
