// Keyed archives: any bytes are read or refused, and what was read is archived and read again.
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "fuzz/require.h"
#include "tests/platform/archiving/cut_graph.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const NSClass& node = NSCoding::registerClass<Node>();
    require(node.name() == "Node");
    NSId read;
    try {
        read = NSKeyedUnarchiver::unarchiveObjectWithData(NSData::dataWithBytes(data, size));
    } catch (const NSException&) {
        return 0; // and nothing that was made until then is left
    }
    // The second round has the order and the types that this library writes, and changes no more.
    const NSId second =
        NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(read));
    auto archive = NSKeyedArchiver::archivedDataWithRootObject(second);
    const NSId third = NSKeyedUnarchiver::unarchiveObjectWithData(archive);
    require(NSKeyedArchiver::archivedDataWithRootObject(third)->isEqualToData(archive));
    for (const NSId& root : { read, second, third })
        cutGraph(root);
    return 0;
}
