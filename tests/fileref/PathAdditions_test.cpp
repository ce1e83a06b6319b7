#include "LUMFoundation/PathAdditions.h"

#include "LUMPlatform/NSSend.h"
#include "tests/platform/files/tree_fixture.h"

namespace {

class PathAdditionsTest : public TreeTest {
protected:
    PathAdditionsTest() { makeFolder("Contents/Helpers"); }

    std::string helper(const NSRef<NSString>& name) const
    {
        const auto found = PathAdditions::pathForHelper(NSBundle::bundleWithPath(folder.string()), name);
        return found ? std::filesystem::path(found->utf8()).lexically_relative(folder).string() : "(null)";
    }
};

TEST_F(PathAdditionsTest, HasAFolderForHelpers)
{
    EXPECT_EQ(PathAdditions::helperPath(NSBundle::bundleWithPath(folder.string()))->utf8(),
        path("Contents/Helpers"));
    EXPECT_EQ(PathAdditions::helperPath(NSBundle::bundleWithPath("/"))->utf8(), "/Contents/Helpers");
    EXPECT_FALSE(PathAdditions::helperPath(nullptr));
}

TEST_F(PathAdditionsTest, PrefersTheNameAsItStands)
{
    makeFolder("Contents/Helpers/Tool.app");
    EXPECT_EQ(helper("Tool"), "Contents/Helpers/Tool.app");
    put("Contents/Helpers/Tool");
    EXPECT_EQ(helper("Tool"), "Contents/Helpers/Tool");
    EXPECT_EQ(helper("Tool.app"), "Contents/Helpers/Tool.app");
}

TEST_F(PathAdditionsTest, FindsNoHelperThatIsNotThere)
{
    EXPECT_EQ(helper("None"), "(null)");
    EXPECT_EQ(helper(nullptr), "(null)");
    EXPECT_EQ(helper(""), "Contents/Helpers"); // which is there
    EXPECT_FALSE(PathAdditions::pathForHelper(nullptr, "Tool"));
}

TEST_F(PathAdditionsTest, IsAnsweredByBundles)
{
    put("Contents/Helpers/Tool");
    const auto bundle = NSBundle::bundleWithPath(folder.string());
    EXPECT_EQ(NSSend<NSRef<NSString>>(bundle, NSSelector("pathForHelper:"), NSRef<NSString>("Tool"))->utf8(),
        path("Contents/Helpers/Tool"));
    EXPECT_EQ(NSSend<NSRef<NSString>>(bundle, NSSelector("helperPath"))->utf8(), path("Contents/Helpers"));
}

}
