#pragma once

#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSURL.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

#include <filesystem>
#include <fstream>
#include <sstream>

/// A folder for each test, with a new bundle "doc" in it and a folder "outside" that nothing may touch.
class BundleTest : public ObjectTest {
protected:
    BundleTest()
    {
        std::string made = (std::filesystem::temp_directory_path() / "document-bundle-XXXXXX").string();
        folder = std::filesystem::canonical(mkdtemp(made.data()));
        std::filesystem::create_directory(folder / "outside");
        put("outside/secret.plist", "{ a = b; }");
        bundle = LUMDocumentBundle::documentBundleWithPath(at("doc"), true);
    }
    ~BundleTest() override { std::filesystem::remove_all(folder); }

    NSRef<NSString> at(const std::string& name) const { return (folder / name).string(); }
    bool isThere(const std::string& name) const
    {
        return std::filesystem::exists(std::filesystem::symlink_status(folder / name));
    }
    void put(const std::string& name, const std::string& text) const
    {
        const std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }
    std::string get(const std::string& name) const
    {
        std::ostringstream text;
        text << std::ifstream(folder / name, std::ios::binary).rdbuf();
        return text.str();
    }
    void link(const std::string& target, const std::string& name) const
    {
        std::filesystem::create_directories((folder / name).parent_path());
        std::filesystem::create_symlink(target, folder / name);
    }
    static NSInteger codeOf(const NSRef<NSError>& error) { return error ? error->code() : 0; }

    std::filesystem::path folder;
    NSRef<LUMDocumentBundle> bundle;
};

constexpr std::uint32_t fourCharacters(const char (&text)[5])
{
    std::uint32_t code = 0;
    for (int at = 0; at < 4; ++at)
        code = code << 8 | static_cast<unsigned char>(text[at]);
    return code;
}
