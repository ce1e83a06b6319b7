#include "platform/strings/path_text.h"

#include "platform/strings/path_lookup.h"
#include "tests/vector_file.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace platform;

/// The result of an operation in the form of the expected column.
std::string spelled(const vectors::Json& json)
{
    switch (json.kind) {
    case vectors::Json::Kind::Text: {
        std::string text = "\"";
        for (char16_t unit : json.text)
            text += unit < 0x80 ? std::string(1, static_cast<char>(unit)) : "<" + std::to_string(unit) + ">";
        return text + "\"";
    }
    case vectors::Json::Kind::Array: {
        std::string list = "[";
        for (const auto& item : json.items)
            list += spelled(item) + ",";
        return list + "]";
    }
    case vectors::Json::Kind::Number:
        return std::to_string(json.number);
    default:
        return "null";
    }
}

vectors::Json textJson(std::u16string_view text)
{
    vectors::Json json;
    json.kind = vectors::Json::Kind::Text;
    json.text = text;
    return json;
}

vectors::Json optionalJson(const std::optional<std::u16string>& text)
{
    return text ? textJson(*text) : vectors::Json();
}

vectors::Json boolJson(bool value)
{
    vectors::Json json;
    json.kind = vectors::Json::Kind::Number;
    json.number = value;
    return json;
}

vectors::Json listJson(const std::vector<std::u16string_view>& texts)
{
    vectors::Json json;
    json.kind = vectors::Json::Kind::Array;
    for (auto text : texts)
        json.items.push_back(textJson(text));
    return json;
}

vectors::Json joinedJson(const vectors::Json& components)
{
    std::vector<std::u16string_view> views;
    for (const auto& item : components.items)
        views.push_back(item.text);
    return textJson(pathWithComponents(views));
}

struct Operation {
    const char* name;
    std::function<vectors::Json(const vectors::Json& path, const std::u16string& argument)> run;
};

class PathVectors : public testing::TestWithParam<Operation> {
protected:
    // The expectations hold for a user whose home is /root.
    PathVectors() { setenv("HOME", "/root", 1); }
};

TEST_P(PathVectors, GiveWhatIsExpected)
{
    int rows = 0;
    for (const vectors::Row& row : vectors::load("path_ops.tsv")) {
        if (row.cell("op") != GetParam().name)
            continue;
        SCOPED_TRACE(row);
        std::u16string argument = row.cell("arg_json").empty() ? u"" : row.text("arg_json");
        vectors::Json path = row.json("path_json");
        EXPECT_EQ(spelled(GetParam().run(path, argument)), spelled(row.json("expected_json")))
            << spelled(path);
        ++rows;
    }
    EXPECT_GT(rows, 4);
}

INSTANTIATE_TEST_SUITE_P(PathOps, PathVectors,
    testing::Values(
        Operation { "lastPathComponent", [](auto& p, auto&) { return textJson(lastPathComponent(p.text)); } },
        Operation { "pathExtension", [](auto& p, auto&) { return textJson(pathExtension(p.text)); } },
        Operation { "pathComponents", [](auto& p, auto&) { return listJson(pathComponents(p.text)); } },
        Operation {
            "deletingPathExtension", [](auto& p, auto&) { return textJson(deletingPathExtension(p.text)); } },
        Operation { "deletingLastPathComponent",
            [](auto& p, auto&) { return textJson(deletingLastPathComponent(p.text)); } },
        Operation { "appendingPathComponent",
            [](auto& p, auto& arg) { return textJson(appendingPathComponent(p.text, arg)); } },
        Operation { "appendingPathExtension",
            [](auto& p, auto& arg) { return optionalJson(appendingPathExtension(p.text, arg)); } },
        Operation { "pathWithComponents", [](auto& p, auto&) { return joinedJson(p); } },
        Operation { "isAbsolutePath", [](auto& p, auto&) { return boolJson(isAbsolutePath(p.text)); } },
        Operation { "expandingTilde", [](auto& p, auto&) { return textJson(expandingTilde(p.text)); } },
        Operation { "standardizingPath", [](auto& p, auto&) { return textJson(standardizedPath(p.text)); } }),
    [](const auto& operation) { return operation.param.name; });

TEST(PathTest, EmptyExtensionLeavesThePathAsItIs)
{
    EXPECT_EQ(appendingPathExtension(u"Folder", u""), u"Folder");
    EXPECT_EQ(appendingPathExtension(u"a//b/", u""), u"a//b/");
    EXPECT_EQ(appendingPathExtension(u"", u""), u"");
}

TEST(PathTest, NothingToExtendIsRefused)
{
    EXPECT_EQ(appendingPathExtension(u"", u"txt"), std::nullopt);
    EXPECT_EQ(appendingPathExtension(u"/", u"txt"), std::nullopt);
    EXPECT_EQ(appendingPathExtension(u"//", u"txt"), std::nullopt);
    EXPECT_EQ(appendingPathExtension(u"a", u"/txt"), std::nullopt);
}

TEST(PathTest, TrailingSlashIsAComponentOfItsOwn)
{
    auto components = pathComponents(u"/a/b/");
    EXPECT_EQ(components, (std::vector<std::u16string_view> { u"/", u"a", u"b", u"/" }));
    EXPECT_EQ(pathWithComponents(components), u"/a/b");
}

TEST(PathTest, NoComponentsAreTheEmptyPath)
{
    EXPECT_EQ(pathWithComponents({}), u"");
}

std::u16string pathOfFewCharacters()
{
    auto path = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("a./b")));
    return { path.begin(), path.end() };
}

RC_GTEST_PROP(PathLaw, NameBehindParentIsThePath, ())
{
    auto path = pathOfFewCharacters();
    auto whole = squeezedPath(appendingPathComponent(path, u""));
    auto name = std::u16string(lastPathComponent(path));
    auto parent = deletingLastPathComponent(path);
    if (!path.empty() && path.find_first_not_of(u'/') != std::u16string::npos)
        RC_ASSERT((squeezedPath(appendingPathComponent(parent, name)) == whole));
}

RC_GTEST_PROP(PathLaw, AppendedExtensionIsReadBack, ())
{
    auto path = pathOfFewCharacters();
    auto extended = appendingPathExtension(path, u"txt");
    if (extended) {
        RC_ASSERT((pathExtension(*extended) == u"txt"));
        RC_ASSERT((deletingPathExtension(*extended) == appendingPathComponent(path, u"")));
    }
}

}
