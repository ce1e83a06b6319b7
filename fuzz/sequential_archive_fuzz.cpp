// Sequential archives: any bytes are read or refused, and what was read is archived and read again.
#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSUnarchiver.h"
#include "fuzz/archived_node.h"
#include "fuzz/leading_back.h"
#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const NSClass& node = NSCoding::registerClass<Node>();
    require(node.name() == "Node");
    NSId read;
    try {
        read = NSUnarchiver::unarchiveObjectWithData(NSData::dataWithBytes(data, size));
    } catch (const NSException&) {
        Node::cutAll(nullptr);
        return 0;
    }
    const NSId second = NSUnarchiver::unarchiveObjectWithData(NSArchiver::archivedDataWithRootObject(read));
    auto archive = NSArchiver::archivedDataWithRootObject(second);
    const NSId third = NSUnarchiver::unarchiveObjectWithData(archive);
    require(NSArchiver::archivedDataWithRootObject(third)->isEqualToData(archive));
    for (const NSId& root : { read, second, third })
        Node::cutAll(root);
    return 0;
}
