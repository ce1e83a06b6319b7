#include "platform/strings/percent_escape.h"

#include "tests/platform/strings/telling_text.h"
#include "tests/vector_file.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace platform;

class EscapeVectors : public testing::TestWithParam<vectors::Row> { };

TEST_P(EscapeVectors, EscapeAsExpected)
{
    EXPECT_EQ(addingPercentEscapes(GetParam().text("string_json")), GetParam().text("escaped_json"));
}

INSTANTIATE_TEST_SUITE_P(PercentEscape, EscapeVectors, testing::ValuesIn(vectors::load("percent_escape.tsv")),
    [](const auto& row) { return row.param.name(); });

TEST(EscapeTest, DecomposedCharactersStayDecomposed)
{
    EXPECT_EQ(addingPercentEscapes(u"e\u0301"), u"e%CC%81");
}

TEST(EscapeTest, LoneSurrogateCannotBeEscaped)
{
    const char16_t lone[] = { u'a', 0xD800 };
    EXPECT_EQ(addingPercentEscapes({ lone, 2 }), std::nullopt);
    EXPECT_EQ(replacingPercentEscapes({ lone, 2 }), std::nullopt);
}

TEST(UnescapeTest, TakesDigitsOfEitherCase)
{
    EXPECT_EQ(replacingPercentEscapes(u"%c3%A9%2f"), u"\u00e9/");
}

TEST(UnescapeTest, RefusesWhatIsNoEscape)
{
    EXPECT_EQ(replacingPercentEscapes(u"%"), std::nullopt);
    EXPECT_EQ(replacingPercentEscapes(u"%2"), std::nullopt);
    EXPECT_EQ(replacingPercentEscapes(u"%zz"), std::nullopt);
    EXPECT_EQ(replacingPercentEscapes(u"%FF"), std::nullopt);
}

RC_GTEST_PROP(EscapeLaw, EscapedTextComesBack, ())
{
    std::u16string text = (*anyText()).units;
    if (auto escaped = addingPercentEscapes(text))
        RC_ASSERT((replacingPercentEscapes(*escaped) == text));
}

}
