#include "LUMFoundation/LUMFileRefEnumerator.h"

#include "platform/files/node_system.h"
#include "tests/fileref/fileref_fixture.h"
#include "tests/platform/files/faulty_node_system.h"

#include <cerrno>
#include <cstring>

namespace {

/// Lists given names, in their order, whatever folder it is asked about.
class OrderedSystem final : public FaultyNodeSystem {
public:
    explicit OrderedSystem(std::vector<std::string> names) : mNames(std::move(names)) { }

    std::ptrdiff_t list(int, std::span<std::byte> buffer) override
    {
        std::size_t length = 0;
        for (const std::string& name : std::exchange(mNames, {})) {
            const auto size = static_cast<std::uint16_t>((19 + name.size() + 1 + 7) / 8 * 8);
            std::byte* const entry = buffer.data() + length;
            std::memset(entry, 0, size);
            std::memset(entry, 1, 8);
            std::memcpy(entry + 16, &size, 2);
            std::memcpy(entry + 19, name.data(), name.size());
            length += size;
        }
        return static_cast<std::ptrdiff_t>(length);
    }

private:
    std::vector<std::string> mNames;
};

class LUMFileRefEnumeratorTest : public FileRefTest {
protected:
    static std::string next(const NSRef<LUMFileRefEnumerator>& enumerator)
    {
        const auto child = NSCast<LUMFileRef>(enumerator->nextObject());
        return child ? text(child->name()) : "(null)";
    }
};

TEST_F(LUMFileRefEnumeratorTest, HandsOutEachVisibleChildOnce)
{
    file("f");
    folder("a");
    const auto enumerator = here()->childEnumerator();
    std::vector<std::string> found { next(enumerator), next(enumerator) };
    std::ranges::sort(found);
    EXPECT_EQ(found, (std::vector<std::string> { "a", "f" }));
    EXPECT_EQ(next(enumerator), "(null)");
    EXPECT_EQ(next(enumerator), "(null)");
}

// Deliberate: the hidden entry in hand at the end of the folder is handed out.
TEST_F(LUMFileRefEnumeratorTest, DeliberatelyTheLastHiddenEntryIsHandedOutOnceAtTheEnd)
{
    file("a");
    file(".b");
    const auto folder = here();
    const OrderedSystem system({ "a", ".b" });
    const auto enumerator = folder->childEnumerator();
    EXPECT_EQ(next(enumerator), "a");
    EXPECT_EQ(next(enumerator), ".b");
    EXPECT_EQ(next(enumerator), "(null)");
}

TEST_F(LUMFileRefEnumeratorTest, HiddenEntriesBeforeVisibleOnesAreLeftOut)
{
    file(".a");
    file("b");
    file(".c");
    file(".d");
    const auto folder = here();
    const OrderedSystem system({ ".a", "b", ".c", ".d" });
    const auto enumerator = folder->childEnumerator();
    EXPECT_EQ(next(enumerator), "b");
    EXPECT_EQ(next(enumerator), ".d");
    EXPECT_EQ(next(enumerator), "(null)");
}

TEST_F(LUMFileRefEnumeratorTest, FollowsLinksOrHandsOutThoseThatDangle)
{
    folder("a");
    file("f");
    link("a/1", at("f"));
    link("a/2", "missing");
    const auto folder = handle("a");
    const OrderedSystem system({ "1", "gone meanwhile", "2" });
    const auto enumerator = folder->childEnumerator();
    EXPECT_EQ(next(enumerator), "f");
    EXPECT_EQ(next(enumerator), "2");
    EXPECT_EQ(next(enumerator), "(null)");
}

// Deliberate: not only those that are left.
TEST_F(LUMFileRefEnumeratorTest, DeliberatelyAllObjectsAreAllVisibleChildrenAtAnyTime)
{
    for (const std::string name : { "a", "b", "c", ".d" })
        file(name);
    const auto enumerator = here()->childEnumerator();
    (void)enumerator->nextObject();
    (void)enumerator->nextObject();
    EXPECT_EQ(names(enumerator->allObjects()), "a b c ");
    EXPECT_EQ(names(NSRef<NSEnumerator>(enumerator)->allObjects()), "a b c ");
}

TEST_F(LUMFileRefEnumeratorTest, IsNullForWhatCannotBeListed)
{
    file("f");
    EXPECT_FALSE(handle("f")->childEnumerator());
    EXPECT_FALSE(LUMFileRefEnumerator::initWithFileRef(nullptr));
    const auto folder = here();
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::OpenFolder, EIO);
    EXPECT_FALSE(folder->childEnumerator());
}

TEST_F(LUMFileRefEnumeratorTest, EndsWhereTheFolderCannotBeReadOn)
{
    file("f");
    const auto folder = here();
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::List, EIO, 1);
    const auto enumerator = folder->childEnumerator();
    EXPECT_EQ(next(enumerator), "f");
    EXPECT_EQ(next(enumerator), "(null)");
}

TEST_F(LUMFileRefEnumeratorTest, KeepsTheFolderAlive)
{
    file("f");
    auto folder = here();
    const auto enumerator = folder->childEnumerator();
    folder = nullptr;
    EXPECT_EQ(next(enumerator), "f");
    EXPECT_EQ(names(enumerator->allObjects()), "f ");
}

TEST_F(LUMFileRefEnumeratorTest, HandsOutItsChildrenInALoop)
{
    file("f");
    for (const NSId& child : here()->childEnumerator())
        EXPECT_EQ(text(NSCast<LUMFileRef>(child)->name()), "f");
}

}
