#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSSend.h"

#include <functional>

/// Answers for itself whether it is plistable and what it is serialised as, and counts how often it is asked.
class PlistAnswer : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"isPlistable", &PlistAnswer::isPlistable>(),
        };
        static const NSClass& type = NSClass::define("PlistAnswer", &NSObject::classObject(), kMethods);
        return type;
    }

    bool isPlistable()
    {
        ++asked;
        return answer;
    }

    bool answer;
    int asked = 0;

protected:
    explicit PlistAnswer(bool itsAnswer) : answer(itsAnswer) { }
    ~PlistAnswer() override = default;
};

/// Empties the array it is in when it is asked.
class PlistSpoiler : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"isPlistable", &PlistSpoiler::isPlistable>(),
            NSMethodOf<"serializedPlist", &PlistSpoiler::serializedPlist>(),
        };
        static const NSClass& type = NSClass::define("PlistSpoiler", &NSObject::classObject(), kMethods);
        return type;
    }

    bool isPlistable()
    {
        spoil();
        return true;
    }
    NSRef<NSData> serializedPlist()
    {
        spoil();
        return nullptr;
    }

    std::function<void()> spoil;

protected:
    explicit PlistSpoiler(std::function<void()> how) : spoil(std::move(how)) { }
    ~PlistSpoiler() override = default;
};

/// An array with a fingerprint of its own.
class PrintedArray : public NSArray {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"serializedPlist", &PrintedArray::print>(),
        };
        static const NSClass& type = NSClass::define("PrintedArray", &NSArray::classObject(), kMethods);
        return type;
    }

    NSRef<NSData> print() { return isEmpty ? nullptr : NSData::dataWithBytes("P", 1); }

    bool isEmpty;

protected:
    explicit PrintedArray(bool withoutPrint) : isEmpty(withoutPrint) { }
    ~PrintedArray() override = default;
};
