#include "LUMFoundation/LUMConstants.h"

#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

struct Constant {
    const char* name;
    const NSStringConstant& constant;
    const char* text;

    friend std::ostream& operator<<(std::ostream& stream, const Constant& row) { return stream << row.text; }
};

class LUMConstantsTest : public ObjectTest, public testing::WithParamInterface<Constant> { };

TEST_P(LUMConstantsTest, HasItsText)
{
    EXPECT_EQ(GetParam().constant.string()->utf8(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, LUMConstantsTest,
    testing::Values( //
        Constant { "NonPlistTypeException", LUMNonPlistTypeException, "LUMNonPlistTypeException" },
        Constant { "SerializedPlistException", LUMSerializedPlistException, "LUMSerializedPlistException" },
        Constant { "DocumentDomain", LUMDocumentBundle_DocumentDomain,
            "org.lumfoundation.documentbundle.domain.document" },
        Constant { "Dictionary", LUMDocumentBundle_Dictionary, "org.lumfoundation.bundle.dictionary" },
        Constant { "ThumbnailJPEG", LUMMediaDocumentBundle_ThumbnailJPEG, "jpeg" },
        Constant { "ThumbnailPNG", LUMMediaDocumentBundle_ThumbnailPNG, "png" }),
    [](const auto& row) { return row.param.name; });

TEST(LUMConstantsNullTest, DeliberatelyTheAutomaticFormOfAThumbnailIsNull)
{
    EXPECT_EQ(LUMMediaDocumentBundle_ThumbnailAuto.string(), nullptr);
}

}
