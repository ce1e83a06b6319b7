#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/Handle.h"
#include "LUMPlatform/NSData.h"

/// Data from and to handles.
///
///     Handle handle = LUMData_Handle::newHandleWithContents(data);
///     auto again = LUMData_Handle::lumDataWithContentsOfHandle(handle);
///     DisposeHandle(handle);
namespace LUMData_Handle {

/// A new handle with a copy of the bytes, which the caller disposes of. Null for null, and when there is no
/// memory. Threads: any.
/// Selector: newHandleWithContents
LUM_EXPORT Handle newHandleWithContents(const NSRef<NSData>& data);

/// A copy of the bytes of a handle, whose state is afterwards what it was. Null for null, and when there is
/// no memory. Threads: one at a time for a handle.
/// Selector (of the class): lumDataWithContentsOfHandle:
LUM_EXPORT NSRef<NSData> lumDataWithContentsOfHandle(Handle handle);

}
