#include "platform/values/errno_status.h"

#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

#include <cerrno>
#include <cstring>

namespace {

struct Row {
    int number;
    OSStatus status;
};
void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << strerrorname_np(row.number);
}

class ErrnoStatusTest : public testing::TestWithParam<Row> { };

TEST_P(ErrnoStatusTest, HasOneStatusForEachNumber)
{
    EXPECT_EQ(platform::statusFromErrno(GetParam().number), GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(Numbers, ErrnoStatusTest,
    testing::Values(Row { ENOENT, -43 }, Row { EEXIST, -48 }, Row { ENOTDIR, -120 }, Row { EACCES, -5000 },
        Row { EPERM, -5000 }, Row { ENOSPC, -34 }, Row { EDQUOT, -34 }, Row { EROFS, -44 },
        Row { ENAMETOOLONG, -37 }, Row { EILSEQ, -37 }, Row { EBUSY, -47 }, Row { ENOTEMPTY, -47 },
        Row { EXDEV, -1303 }, Row { EMFILE, -42 }, Row { ENFILE, -42 }, Row { ELOOP, -1043 },
        Row { EINVAL, -50 }, Row { ENODEV, -35 }, Row { ENXIO, -35 }, Row { EIO, -36 }, Row { ENOMEM, -36 },
        Row { EISDIR, -36 }),
    [](const auto& row) { return strerrorname_np(row.param.number); });

struct StatusErrorTest : ObjectTest { };

TEST_F(StatusErrorTest, TakesNoErrnoForSuccess)
{
    EXPECT_EQ(platform::statusFromErrno(0), 0);
}

TEST_F(StatusErrorTest, MakesErrorsWithoutInformation)
{
    auto error = platform::errorWithStatus(-43);
    EXPECT_THAT(error->domain(), Equals("NSOSStatusErrorDomain"));
    EXPECT_EQ(error->code(), -43);
    EXPECT_EQ(error->userInfo()->count(), 0u);
}

TEST_F(StatusErrorTest, StoresTheErrorWhereItIsAskedFor)
{
    NSRef<NSError> error;
    EXPECT_FALSE(platform::fail(&error, -5000));
    EXPECT_EQ(error->code(), -5000);
    EXPECT_FALSE(platform::fail(nullptr, -5000));
}

}
