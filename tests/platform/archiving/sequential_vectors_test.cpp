// Sequential archives of colours, byte for byte.
#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSCoding.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSUnarchiver.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/archive_bytes.h"
#include "tests/vector_file.h"

#include <sstream>

namespace {

/// Writes a kind and its components, as colours do.
class Colour : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("NSColor", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<Colour> initWithCoder(NSCoder& coder)
    {
        auto colour = NSMake<Colour>();
        coder.decodeValuesOfObjCTypes(colour->kind);
        auto& c = colour->components;
        c.resize(colour->kind == 3 ? 2 : colour->kind == 5 ? 5 : 4);
        if (c.size() == 2)
            coder.decodeValuesOfObjCTypes(c[0], c[1]);
        else if (c.size() == 5)
            coder.decodeValuesOfObjCTypes(c[0], c[1], c[2], c[3], c[4]);
        else
            coder.decodeValuesOfObjCTypes(c[0], c[1], c[2], c[3]);
        return colour;
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        const auto& c = components;
        coder.encodeValuesOfObjCTypes(kind);
        if (c.size() == 2)
            coder.encodeValuesOfObjCTypes(c[0], c[1]);
        else if (c.size() == 5)
            coder.encodeValuesOfObjCTypes(c[0], c[1], c[2], c[3], c[4]);
        else
            coder.encodeValuesOfObjCTypes(c[0], c[1], c[2], c[3]);
    }

    signed char kind = 0;
    std::vector<float> components;
};

class SequentialVectors : public ObjectTest, public testing::WithParamInterface<vectors::Row> {
protected:
    SequentialVectors() { NSCoding::registerClass<Colour>(); }

    NSRef<Colour> colour() const
    {
        auto colour = NSMake<Colour>();
        colour->kind = static_cast<signed char>(GetParam().number("kind"));
        std::istringstream components(GetParam().cell("components"));
        for (float component; components >> component;)
            colour->components.push_back(component);
        return colour;
    }
};

TEST_P(SequentialVectors, AreWrittenByteForByte)
{
    EXPECT_EQ(hex(NSArchiver::archivedDataWithRootObject(colour())->bytes()),
        hex(archiveOf(GetParam().cell("hex"))->bytes()));
}

TEST_P(SequentialVectors, AreRead)
{
    auto read = NSCast<Colour>(NSUnarchiver::unarchiveObjectWithData(archiveOf(GetParam().cell("hex"))));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->kind, colour()->kind);
    EXPECT_EQ(read->components, colour()->components);
}

INSTANTIATE_TEST_SUITE_P(Colours, SequentialVectors,
    testing::ValuesIn(vectors::load("sequential_colors.tsv")),
    [](const auto& row) { return row.param.cell("name"); });

class BigEndianArchiveTest : public ObjectTest { };

TEST_F(BigEndianArchiveTest, IsRead)
{
    NSCoding::registerClass<Colour>();
    auto read = NSCast<Colour>(NSUnarchiver::unarchiveObjectWithData(
        archiveOf("040b747970656473747265616d8103e8" // "typedstream", 1000
                  "84014084848407 4e53436f6c6f72 00848408 4e534f626a656374 0085"
                  "840163018404 66666666 833f000000 833e800000 833f400000 01 86")));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->components, (std::vector<float> { 0.5F, 0.25F, 0.75F, 1 }));
}

}
