#pragma once

#include "LUMFoundation/LUMFileRefEnumerator.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSURL.h"
#include "tests/platform/files/reference_fixture.h"

#include <algorithm>

/// A folder of its own, and handles on what is in it.
class FileRefTest : public ReferenceTest {
protected:
    ~FileRefTest() override { FSReleaseDescriptors(); }

    std::string link(const std::string& name, const std::string& target) const
    {
        std::filesystem::create_symlink(target, at(name));
        return at(name);
    }
    NSRef<LUMFileRef> handle(const std::string& name) const { return LUMFileRef::fileRefWithPath(at(name)); }
    NSRef<LUMFileRef> linkHandle(const std::string& name) const
    {
        return LUMFileRef::fileRefWithPathResolveAlias(at(name), false);
    }
    NSRef<LUMFileRef> here() const { return LUMFileRef::fileRefWithPath(mFolder.string()); }

    static std::string text(const NSRef<NSString>& text) { return text ? text->utf8() : "(null)"; }
    static std::string pathOf(const NSRef<LUMFileRef>& fileRef)
    {
        return fileRef ? text(fileRef->path()) : "(no handle)";
    }
    static NSInteger codeOf(const NSRef<NSError>& error) { return error ? error->code() : 0; }
    /// Names of handles in alphabetical order.
    static std::string names(const NSRef<NSArray>& fileRefs)
    {
        if (!fileRefs)
            return "(null)";
        std::vector<std::string> names;
        for (const NSId& fileRef : *fileRefs)
            names.push_back(text(NSCast<LUMFileRef>(fileRef)->name()));
        std::ranges::sort(names);
        std::string all;
        for (const std::string& name : names)
            all += name + " ";
        return all;
    }
};
