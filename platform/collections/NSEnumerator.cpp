#include "LUMPlatform/NSEnumerator.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"nextObject", &NSEnumerator::nextObject>(),
    NSMethodOf<"allObjects", &NSEnumerator::allObjects>(),
};

}

const NSClass& NSEnumerator::classObject()
{
    static const NSClass& type = NSClass::define("NSEnumerator", &NSObject::classObject(), kMethods);
    return type;
}

NSEnumerator::~NSEnumerator() = default;

NSRef<NSArray> NSEnumerator::allObjects()
{
    std::vector<NSId> objects;
    while (NSId object = nextObject())
        objects.push_back(std::move(object));
    return NSArray::arrayWithObjects(std::move(objects));
}
