// Every system call under a handle fails once, in every way: a handle then says what it can, or that it
// cannot.
#include "tests/fileref/fileref_fixture.h"

#include "LUMPlatform/NSDictionary.h"
#include "tests/platform/files/faulty_node_system.h"

#include <cerrno>
#include <cstring>

namespace {

class LUMFileRefFaultsTest : public FileRefTest, public testing::WithParamInterface<int> { };

TEST_P(LUMFileRefFaultsTest, NothingButTheTruthIsTold)
{
    folder("a");
    file("a/f");
    link("alias", "a/f");
    bool hasFailed = true;
    for (int at = 0; hasFailed; ++at) {
        FSReleaseDescriptors();
        FaultyNodeSystem system;
        system.fail(FaultyNodeSystem::All, GetParam(), at, false);
        NSRef<NSError> error;
        const auto fileRef = LUMFileRef::fileRefWithPath(this->at("alias"), &error);
        EXPECT_EQ(fileRef == nullptr, error != nullptr);
        if (fileRef) {
            const auto path = fileRef->path();
            EXPECT_TRUE(!path || path->isEqualToString(this->at("a/f"))) << path;
            const auto parent = fileRef->parent();
            const auto children = parent ? parent->childrenError(&error) : nullptr;
            EXPECT_TRUE(!children || children->count() == 1 || error || GetParam() == ENOENT);
            (void)fileRef->isInTrash();
            (void)fileRef->fileInfo();
            (void)fileRef->hash();
            EXPECT_TRUE(fileRef->isEqual(fileRef));
        }
        hasFailed = system.hasFailed();
        ASSERT_LT(at, 500);
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, LUMFileRefFaultsTest,
    testing::Values(ENOSPC, EIO, EROFS, EACCES, EXDEV, EMFILE, ENFILE, ENOENT, ENOMEM),
    [](const auto& fault) { return std::string(strerrorname_np(fault.param)); });

}
