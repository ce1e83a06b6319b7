#pragma once

#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"

#include <set>
#include <string>

/// Lets objects of any class be decoded: in place of classes that this program does not have it offers one
/// that reads nothing, and remembers their names.
class StandIns : public NSObject, public NSKeyedUnarchiverDelegate {
public:
    static const NSClass& classObject();
    const NSClass* unarchiverCannotDecodeObjectOfClassName(NSKeyedUnarchiver& unarchiver,
        const NSRef<NSString>& name, const NSRef<NSArray>& originalClasses) override;

    const std::set<std::string>& unknownClasses() const { return mUnknownClasses; }

protected:
    StandIns() = default;
    ~StandIns() override;

private:
    std::set<std::string> mUnknownClasses;
};

/// The object under a key of a domain. Null with an error when there is no file, or one that cannot be read;
/// raises NSException for one that is no archive, or a broken one.
NSId decodeObject(const LUMDocumentBundle& bundle, const std::string& domain, const std::string& key,
    const NSRef<StandIns>& standIns, NSRef<NSError>* error);
