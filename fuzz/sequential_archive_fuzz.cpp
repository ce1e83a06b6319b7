// Sequential archives: any bytes are read or refused, and what was read is archived and read again.
#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSUnarchiver.h"
#include "fuzz/require.h"
#include "tests/platform/archiving/cut_graph.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const NSClass& node = NSCoding::registerClass<Node>();
    require(node.name() == "Node");
    NSId read;
    try {
        read = NSUnarchiver::unarchiveObjectWithData(NSData::dataWithBytes(data, size));
    } catch (const NSException&) {
        return 0; // and nothing that was made until then is left
    }
    const NSId second = NSUnarchiver::unarchiveObjectWithData(NSArchiver::archivedDataWithRootObject(read));
    auto archive = NSArchiver::archivedDataWithRootObject(second);
    const NSId third = NSUnarchiver::unarchiveObjectWithData(archive);
    require(NSArchiver::archivedDataWithRootObject(third)->isEqualToData(archive));
    for (const NSId& root : { read, second, third })
        cutGraph(root);
    return 0;
}
