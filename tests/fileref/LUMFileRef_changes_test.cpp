// Renaming, and making what is in a folder.
#include "tests/fileref/fileref_fixture.h"

namespace fs = std::filesystem;

namespace {

class LUMFileRefChangesTest : public FileRefTest {
protected:
    NSRef<NSError> mError;
};

TEST_F(LUMFileRefChangesTest, ARenamedHandleIsOnTheSameObject)
{
    file("f");
    const auto fileRef = handle("f");
    const FSRef* const ref = fileRef->fsRef();
    EXPECT_TRUE(fileRef->renameWithName("g", &mError));
    EXPECT_FALSE(mError);
    EXPECT_EQ(text(fileRef->name()), "g");
    EXPECT_EQ(fileRef->compare(handle("g")), NSOrderedSame);
    EXPECT_EQ(fileRef->fsRef(), ref) << "replaced in place";
    EXPECT_EQ(ReferenceTest::pathOf(*ref), at("g"));
}

TEST_F(LUMFileRefChangesTest, ALinkLeftInThePlaceOfAFolderThatMovedIsOnNoHandlesPath)
{
    folder("a");
    file("a/f");
    const auto before = handle("a/f");
    const auto above = handle("a");
    rename("a", "b");
    link("a", "b");
    EXPECT_EQ(pathOf(before), at("b/f"));
    EXPECT_TRUE(before->isDescendentOf(above));
    EXPECT_TRUE(before->isChildOf(above));
    EXPECT_TRUE(before->isEqual(handle("a/f")));
    EXPECT_EQ(pathOf(before), pathOf(handle("a/f")));
    EXPECT_TRUE(before->renameWithName("g", &mError));
    EXPECT_FALSE(mError);
    EXPECT_EQ(pathOf(before), at("b/g"));
}

TEST_F(LUMFileRefChangesTest, AnAliasKeepsItsNameWhenItsTargetIsRenamed)
{
    file("f");
    link("alias", "f");
    const auto fileRef = handle("alias");
    EXPECT_TRUE(fileRef->renameWithName("g"));
    EXPECT_EQ(pathOf(fileRef->aliasFileRef()), at("alias"));
    EXPECT_TRUE(fs::exists(at("g")));
}

TEST_F(LUMFileRefChangesTest, ANameThatIsTakenIsCode48AndReplacesNothing)
{
    file("f", "own");
    file("g", "other");
    const auto fileRef = handle("f");
    EXPECT_FALSE(fileRef->renameWithName("g", &mError));
    EXPECT_EQ(codeOf(mError), -48);
    EXPECT_EQ(text(fileRef->name()), "f");
    EXPECT_EQ(fs::file_size(at("g")), 5u);
    EXPECT_FALSE(fileRef->renameWithName("g"));
}

TEST_F(LUMFileRefChangesTest, ANameThatCannotBeIsCode37)
{
    file("f");
    const auto fileRef = handle("f");
    for (const NSRef<NSString>& name : { NSRef<NSString>(""), NSRef<NSString>("."), NSRef<NSString>(".."),
             NSRef<NSString>("a/b"), NSRef<NSString>(std::u16string_view(u"a\0b", 3)), NSRef<NSString>() }) {
        mError = nullptr;
        EXPECT_FALSE(fileRef->renameWithName(name, &mError));
        EXPECT_EQ(codeOf(mError), -37) << name;
        mError = nullptr;
        EXPECT_FALSE(here()->createChildWithName(name, false, &mError));
        EXPECT_EQ(codeOf(mError), -37) << name;
    }
    EXPECT_EQ(pathOf(fileRef), at("f"));
}

TEST_F(LUMFileRefChangesTest, ChildrenAreMade)
{
    const auto f = here()->createChildWithName("f", false, &mError);
    EXPECT_EQ(pathOf(f), at("f"));
    EXPECT_FALSE(f->isDirectory());
    const auto a = here()->createChildWithName("a", true);
    EXPECT_TRUE(a->isDirectory());
    EXPECT_TRUE(a->isChildOf(here()));
}

TEST_F(LUMFileRefChangesTest, AChildThatIsThereIsCode48)
{
    file("f");
    EXPECT_FALSE(here()->createChildWithName("f", true, &mError));
    EXPECT_EQ(codeOf(mError), -48);
}

TEST_F(LUMFileRefChangesTest, AChildOfWhatIsNoFolderIsNullWithoutAnError)
{
    file("f");
    EXPECT_FALSE(handle("f")->createChildWithName("g", false, &mError));
    EXPECT_FALSE(mError);
}

TEST_F(LUMFileRefChangesTest, AChildIsFoundByName)
{
    folder("a");
    file("a/f");
    link("a/alias", "f");
    EXPECT_EQ(pathOf(handle("a")->childWithName("f", &mError)), at("a/f"));
    EXPECT_EQ(pathOf(handle("a")->childWithName("alias")), at("a/f"));
    EXPECT_FALSE(mError);
    EXPECT_FALSE(handle("a")->childWithName("missing", &mError));
    EXPECT_EQ(codeOf(mError), -43);
    EXPECT_FALSE(handle("a/f")->childWithName("g", &mError));
    EXPECT_EQ(codeOf(mError), -120);
    EXPECT_FALSE(handle("a")->childWithName(nullptr, &mError));
    EXPECT_EQ(codeOf(mError), -50);
}

TEST_F(LUMFileRefChangesTest, AChildIsMadeOnlyWhenItIsNeeded)
{
    const auto made = here()->createChildIfNeededWithName("a", true, &mError);
    EXPECT_TRUE(made->isDirectory());
    EXPECT_TRUE(made->isEqual(here()->createChildIfNeededWithName("a", false, &mError)))
        << "whatever its kind";
    EXPECT_FALSE(mError);
    EXPECT_FALSE(here()->createChildIfNeededWithName("a/b", true, &mError));
    EXPECT_EQ(codeOf(mError), -37);
    link("dangling", "missing");
    EXPECT_FALSE(here()->createChildIfNeededWithName("dangling", false, &mError));
    EXPECT_EQ(codeOf(mError), -48);
}

}
