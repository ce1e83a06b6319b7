#include "core/status_error.h"

#include "platform/values/errno_status.h"

namespace lum {

Failure fail(NSRef<NSError>* error, OSStatus status)
{
    platform::fail(error, status);
    return {};
}

}
