#include "platform/values/url_text.h"

#include "tests/platform/strings/telling_text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace platform;

std::string plain(std::u16string_view text)
{
    return std::string(text.begin(), text.end());
}

/// "scheme|authority|path|query|fragment" with "-" for a part that is not there; "null" for what is no URL.
std::string partsOf(std::u16string_view text)
{
    const auto parts = parseUrl(text);
    if (!parts)
        return "null";
    const auto shown = [](const std::optional<std::u16string_view>& part) {
        return part ? plain(*part) : "-";
    };
    return shown(parts->scheme) + "|" + shown(parts->authority) + "|" + plain(parts->path) + "|"
        + shown(parts->query) + "|" + shown(parts->fragment);
}

struct Case {
    const char* name;
    std::u16string_view text;
    std::string expected;
    friend std::ostream& operator<<(std::ostream& stream, const Case& row) { return stream << row.name; }
};

class ParseUrlTest : public testing::TestWithParam<Case> { };

TEST_P(ParseUrlTest, FindsTheParts)
{
    EXPECT_EQ(partsOf(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Urls, ParseUrlTest,
    testing::Values(Case { "All", u"foo://me@h.com:80/a/b?q=1/?#f/?", "foo|me@h.com:80|/a/b|q=1/?|f/?" },
        Case { "File", u"file:///a%20b/", "file||/a%20b/|-|-" },
        Case { "Opaque", u"mailto:me@here", "mailto|-|me@here|-|-" },
        Case { "Relative", u"a/b", "-|-|a/b|-|-" }, Case { "Nothing", u"", "-|-||-|-" },
        Case { "EmptyParts", u"s://?#", "s||||" }, Case { "NoPath", u"http://h?q", "http|h||q|-" },
        Case { "ColonInPath", u"a/b:c", "-|-|a/b:c|-|-" },
        Case { "ColonAfterNoScheme", u"1:b", "-|-|1:b|-|-" },
        Case { "Address", u"http://[::1]:8080/", "http|[::1]:8080|/|-|-" },
        Case { "FutureAddress", u"http://[v1f.a:b]/", "http|[v1f.a:b]|/|-|-" },
        Case { "EmptyPort", u"http://h:/", "http|h:|/|-|-" }),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(NoUrls, ParseUrlTest,
    testing::Values(Case { "Space", u"a b", "null" }, Case { "Quote", u"a\"b", "null" },
        Case { "Control", u"a\nb", "null" }, Case { "Nul", std::u16string_view(u"a\0b", 3), "null" },
        Case { "Wide", u"caf\u00e9", "null" }, Case { "BracketInPath", u"/a[1]", "null" },
        Case { "CutEscape", u"a%2", "null" }, Case { "NoHexEscape", u"a%zz", "null" },
        Case { "TwoFragments", u"a#b#c", "null" }, Case { "BadPort", u"http://h:8a/", "null" },
        Case { "OpenAddress", u"http://[::1/", "null" }, Case { "AfterAddress", u"http://[::1]x/", "null" },
        Case { "NoAddress", u"http://[]/", "null" }, Case { "NamedAddress", u"http://[host]/", "null" },
        Case { "TwoUsers", u"http://a@b@c/", "null" }, Case { "Backslash", u"file:\\\\a", "null" }),
    [](const auto& row) { return row.param.name; });

TEST(ParseUrlLimitTest, RefusesTextBeyondTheLimit)
{
    EXPECT_TRUE(parseUrl(std::u16string(kMaxUrlLength, u'a')));
    EXPECT_FALSE(parseUrl(std::u16string(kMaxUrlLength + 1, u'a')));
}

class ResolveUrlTest : public testing::TestWithParam<Case> { };

TEST_P(ResolveUrlTest, GivesTheTextOfTheStandardsExamples)
{
    const auto base = parseUrl(u"http://a/b/c/d;p?q");
    EXPECT_EQ(plain(resolvedUrl(*base, *parseUrl(GetParam().text))), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Normal, ResolveUrlTest,
    testing::Values(Case { "Scheme", u"g:h", "g:h" }, Case { "Name", u"g", "http://a/b/c/g" },
        Case { "Dot", u"./g", "http://a/b/c/g" }, Case { "Folder", u"g/", "http://a/b/c/g/" },
        Case { "Root", u"/g", "http://a/g" }, Case { "Host", u"//g", "http://g" },
        Case { "Query", u"?y", "http://a/b/c/d;p?y" }, Case { "NameQuery", u"g?y", "http://a/b/c/g?y" },
        Case { "Fragment", u"#s", "http://a/b/c/d;p?q#s" },
        Case { "NameFragment", u"g#s", "http://a/b/c/g#s" }, Case { "Semicolon", u";x", "http://a/b/c/;x" },
        Case { "Empty", u"", "http://a/b/c/d;p?q" }, Case { "OneDot", u".", "http://a/b/c/" },
        Case { "DotSlash", u"./", "http://a/b/c/" }, Case { "TwoDots", u"..", "http://a/b/" },
        Case { "TwoDotsSlash", u"../", "http://a/b/" }, Case { "Up", u"../g", "http://a/b/g" },
        Case { "UpUp", u"../..", "http://a/" }, Case { "UpUpName", u"../../g", "http://a/g" }),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(Abnormal, ResolveUrlTest,
    testing::Values(Case { "TooFarUp", u"../../../../g", "http://a/g" },
        Case { "RootDot", u"/./g", "http://a/g" }, Case { "RootUp", u"/../g", "http://a/g" },
        Case { "TrailingDot", u"g.", "http://a/b/c/g." }, Case { "LeadingDots", u"..g", "http://a/b/c/..g" },
        Case { "Nonsense", u"./../g", "http://a/b/g" }, Case { "EndsInDot", u"./g/.", "http://a/b/c/g/" },
        Case { "Inside", u"g/./h", "http://a/b/c/g/h" }, Case { "UpInside", u"g/../h", "http://a/b/c/h" },
        Case { "InQuery", u"g?y/../x", "http://a/b/c/g?y/../x" },
        Case { "InFragment", u"g#s/../x", "http://a/b/c/g#s/../x" },
        Case { "SameScheme", u"http:g", "http:g" }),
    [](const auto& row) { return row.param.name; });

TEST(ResolvedUrlTest, MakesNoAuthorityOfAPath)
{
    const auto base = parseUrl(u"s:/a/b");
    const std::u16string text = resolvedUrl(*base, *parseUrl(u"..//c"));
    EXPECT_EQ(plain(text), "s:/.//c");
    EXPECT_EQ(partsOf(text), "s|-|/.//c|-|-");
}

TEST(ResolvedUrlTest, PutsAPathBehindAHostThatHasNone)
{
    EXPECT_EQ(plain(resolvedUrl(*parseUrl(u"s://h"), *parseUrl(u"a"))), "s://h/a");
}

TEST(ResolvedUrlTest, StripsDotsFromThePathOfAnOpaqueBase)
{
    EXPECT_EQ(plain(resolvedUrl(*parseUrl(u"s:a"), *parseUrl(u"../b"))), "s:b");
}

RC_GTEST_PROP(DotSegmentsTest, AreGoneAfterOnePass, ())
{
    const auto text = *rc::gen::container<std::u16string>(rc::gen::element<char16_t>(u'/', u'.', u'a'));
    const std::u16string once = withoutDotSegments(text);
    RC_ASSERT(withoutDotSegments(once) == once);
    for (std::u16string_view dots : { u"/./", u"/../" })
        RC_ASSERT(once.find(dots) == std::u16string::npos);
}

TEST(EqualIgnoringCaseTest, FoldsLettersOfAsciiAlone)
{
    EXPECT_TRUE(equalIgnoringCase(u"LocalHost", u"localhost"));
    EXPECT_FALSE(equalIgnoringCase(u"localhos", u"localhost"));
    EXPECT_FALSE(equalIgnoringCase(u"@", u"`"));
}

}
