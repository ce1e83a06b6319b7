#include "LUMFoundation/LUMData_Handle.h"

#include "core/extension_operation.h"
#include "core/method_tables.h"

namespace {

Handle handleOf(const NSRef<NSData>& data)
{
    Handle handle = nullptr;
    PtrToHand(data->bytes().data(), &handle, static_cast<NSInteger>(data->length()));
    return handle;
}

using NewHandleWithContents = lum::ExtensionOperation<"newHandleWithContents", &handleOf>;

constexpr NSMethod kMethods[] = { NewHandleWithContents::method() };

}

std::span<const NSMethod> lum::dataHandleMethods()
{
    return kMethods;
}

Handle LUMData_Handle::newHandleWithContents(const NSRef<NSData>& data)
{
    return NewHandleWithContents::call(data);
}

NSRef<NSData> LUMData_Handle::lumDataWithContentsOfHandle(Handle handle)
{
    if (!handle)
        return nullptr;
    const std::int8_t state = HGetState(handle);
    HLock(handle);
    auto data = NSData::dataWithBytes(*handle, static_cast<NSUInteger>(GetHandleSize(handle)));
    HSetState(handle, state);
    return data;
}
