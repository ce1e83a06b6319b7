#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSet.h"
#include "tests/platform/archiving/node.h"

#include <cstdint>
#include <vector>

/// Makes a graph of archivable objects out of bytes, any bytes; the same ones give the same graph. Objects
/// turn up in several places, but none leads back to itself.
class GraphOfBytes {
public:
    explicit GraphOfBytes(const std::vector<std::uint8_t>& bytes) : mBytes(bytes) { }

    NSId object(int depth = 0)
    {
        const std::uint8_t kind = next();
        NSId made = depth < 8 ? container(kind, depth + 1) : nullptr;
        if (!made)
            made = value(kind);
        mMade.push_back(made);
        return made;
    }

private:
    std::uint8_t next() { return mAt < mBytes.size() ? mBytes[mAt++] : 0; }
    std::int64_t integer()
    {
        std::uint64_t value = 0;
        for (int count = next() % 9; count > 0; --count)
            value = value << 8 | next();
        return static_cast<std::int64_t>(value);
    }
    NSRef<NSString> text()
    {
        std::u16string units;
        for (int count = next() % 20; count > 0; --count)
            units += static_cast<char16_t>(next() < 200 ? next() : next() << 8);
        return NSString::stringWithCharacters(units);
    }
    std::vector<NSId> objects(int depth)
    {
        std::vector<NSId> list;
        for (int count = next() % 5; count > 0; --count)
            list.push_back(object(depth));
        return list;
    }

    NSId container(std::uint8_t kind, int depth)
    {
        switch (kind % 32) {
        case 1:
            return NSArray::arrayWithObjects(objects(depth));
        case 2:
            return NSMutableArray::arrayWithArray(NSArray::arrayWithObjects(objects(depth)));
        case 3:
        case 4: {
            auto dictionary = NSMutableDictionary::dictionary();
            for (const NSId& object : objects(depth))
                dictionary->setObject(object, text());
            return kind % 32 == 3 ? NSId(dictionary) : dictionary->copy();
        }
        case 5:
        case 6: {
            auto set = NSMutableSet::set();
            for (int count = next() % 5; count > 0; --count)
                set->addObject(text());
            return kind % 32 == 5 ? NSId(set) : set->copy();
        }
        case 7: {
            auto node = Node::named("node");
            node->next = object(depth);
            return node;
        }
        default:
            return nullptr;
        }
    }

    NSId value(std::uint8_t kind)
    {
        switch (kind % 16) {
        case 8:
            return integer();
        case 9:
            return static_cast<double>(integer()) / 1000;
        case 10:
            return static_cast<float>(integer());
        case 11:
            return next() % 2 == 0;
        case 12:
            return NSMutableString::stringWithString(text());
        case 13: {
            auto bytes = text();
            auto data = NSMutableData::dataWithBytes(bytes->characters().data(), bytes->length());
            return next() % 2 == 0 ? NSId(data) : data->copy();
        }
        case 14:
            return next() % 2 == 0
                ? NSId(NSNull::null())
                : NSDate::dateWithTimeIntervalSinceReferenceDate(static_cast<double>(integer()) / 8);
        case 15:
            if (!mMade.empty())
                return mMade[next() % mMade.size()];
            [[fallthrough]];
        default:
            return text();
        }
    }

    const std::vector<std::uint8_t>& mBytes;
    std::size_t mAt = 0;
    std::vector<NSId> mMade;
};
