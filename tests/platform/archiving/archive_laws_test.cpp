// Laws of archives over graphs of any shape.
#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSUnarchiver.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/cut_graph.h"
#include "tests/platform/archiving/graph.h"

#include <rapidcheck/gtest.h>

namespace {

class ArchiveLaws : public ObjectTest { };

RC_GTEST_FIXTURE_PROP(
    ArchiveLaws, ASequentialArchiveOfWhatWasReadIsTheSameArchive, (const std::vector<std::uint8_t>& bytes))
{
    const NSId graph = GraphOfBytes(bytes).object();
    auto data = NSArchiver::archivedDataWithRootObject(graph);
    const NSId read = NSUnarchiver::unarchiveObjectWithData(data);
    RC_ASSERT(&read->isa() == &graph->isa());
    RC_ASSERT(NSArchiver::archivedDataWithRootObject(read)->isEqualToData(data));
}

RC_GTEST_FIXTURE_PROP(ArchiveLaws, ASequentialArchiveWithAnyByteChangedIsReadOrRaises,
    (const std::vector<std::uint8_t>& bytes, std::size_t place, std::uint8_t value))
{
    auto data =
        NSMutableData::dataWithData(NSArchiver::archivedDataWithRootObject(GraphOfBytes(bytes).object()));
    data->mutableBytes()[place % data->length()] = std::byte(value);
    try {
        cutGraph(NSUnarchiver::unarchiveObjectWithData(data)); // a node may lead back now
    } catch (const NSException&) {
    }
}

RC_GTEST_FIXTURE_PROP(
    ArchiveLaws, AKeyedArchiveOfWhatWasReadIsTheSameArchive, (const std::vector<std::uint8_t>& bytes))
{
    const NSId graph = GraphOfBytes(bytes).object();
    auto data = NSKeyedArchiver::archivedDataWithRootObject(graph);
    const NSId read = NSKeyedUnarchiver::unarchiveObjectWithData(data);
    RC_ASSERT(&read->isa() == &graph->isa());
    RC_ASSERT(NSKeyedArchiver::archivedDataWithRootObject(read)->isEqualToData(data));
}

RC_GTEST_FIXTURE_PROP(ArchiveLaws, AKeyedArchiveWithAnyByteChangedIsReadOrRaises,
    (const std::vector<std::uint8_t>& bytes, std::size_t place, std::uint8_t value))
{
    auto data = NSMutableData::dataWithData(
        NSKeyedArchiver::archivedDataWithRootObject(GraphOfBytes(bytes).object()));
    data->mutableBytes()[place % data->length()] = std::byte(value);
    try {
        cutGraph(NSKeyedUnarchiver::unarchiveObjectWithData(data));
    } catch (const NSException&) {
    }
}

}
