// Sequential archives: any bytes are read or refused, and what was read is archived and read again.
#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSUnarchiver.h"
#include "fuzz/leading_back.h"
#include "fuzz/require.h"
#include "tests/platform/archiving/node.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const NSClass& node = NSCoding::registerClass<Node>();
    require(node.name() == "Node");
    NSId read;
    try {
        read = NSUnarchiver::unarchiveObjectWithData(NSData::dataWithBytes(data, size));
    } catch (const NSException&) {
        return 0;
    }
    auto archive = NSArchiver::archivedDataWithRootObject(read);
    auto again = NSArchiver::archivedDataWithRootObject(NSUnarchiver::unarchiveObjectWithData(archive));
    require(again->isEqualToData(archive));
    return 0;
}
