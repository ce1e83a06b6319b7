#pragma once

#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/class_codings.h"
#include "platform/archiving/keyed_archive.h"

#include <unordered_map>

namespace platform {

/// Which class to make an object of, by the record of a class in an archive.
class KeyedClasses {
public:
    void setClass(const NSClass& type, const NSRef<NSString>& name);

    /// Raises NSInvalidUnarchiveOperationException when there is none; `delegate`, which may be null, is
    /// asked before that.
    const ClassCoding& codingOfRecord(std::uint64_t record, KeyedArchive& archive,
        NSKeyedUnarchiver& unarchiver, const NSRef<NSKeyedUnarchiverDelegate>& delegate);

private:
    const ClassCoding* codingNamed(const NSRef<NSString>& name) const;

    std::unordered_map<std::string, const NSClass*> mSubstitutes;
    std::unordered_map<std::uint64_t, const ClassCoding*> mKnown; // by record; null when asked anew
};

}
