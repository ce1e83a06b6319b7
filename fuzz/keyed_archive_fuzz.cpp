// Keyed archives: any bytes are read or refused, and what was read is archived and read again.
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "fuzz/leading_back.h"
#include "fuzz/require.h"
#include "tests/platform/archiving/node.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const NSClass& node = NSCoding::registerClass<Node>();
    require(node.name() == "Node");
    NSId read;
    try {
        read = NSKeyedUnarchiver::unarchiveObjectWithData(NSData::dataWithBytes(data, size));
    } catch (const NSException&) {
        return 0;
    }
    // The second round has the order and the types that this library writes, and changes no more.
    auto archive = NSKeyedArchiver::archivedDataWithRootObject(
        NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(read)));
    auto again =
        NSKeyedArchiver::archivedDataWithRootObject(NSKeyedUnarchiver::unarchiveObjectWithData(archive));
    require(again->isEqualToData(archive));
    return 0;
}
