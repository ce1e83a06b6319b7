// Keyed archives: any bytes are read or refused, and what was read is archived and read again.
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "fuzz/archived_node.h"
#include "fuzz/leading_back.h"
#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const NSClass& node = NSCoding::registerClass<Node>();
    require(node.name() == "Node");
    NSId read;
    try {
        read = NSKeyedUnarchiver::unarchiveObjectWithData(NSData::dataWithBytes(data, size));
    } catch (const NSException&) {
        Node::cutAll(nullptr);
        return 0;
    }
    // The second round has the order and the types that this library writes, and changes no more.
    const NSId second =
        NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(read));
    auto archive = NSKeyedArchiver::archivedDataWithRootObject(second);
    const NSId third = NSKeyedUnarchiver::unarchiveObjectWithData(archive);
    require(NSKeyedArchiver::archivedDataWithRootObject(third)->isEqualToData(archive));
    for (const NSId& root : { read, second, third })
        Node::cutAll(root);
    return 0;
}
