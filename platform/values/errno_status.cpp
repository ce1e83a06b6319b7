#include "platform/values/errno_status.h"

#include "LUMPlatform/NSString.h"

#include <cerrno>

namespace platform {

OSStatus statusFromErrno(int errnoValue)
{
    switch (errnoValue) {
    case 0:
        return 0;
    case ENOENT:
        return kStatusNotFound;
    case EEXIST:
        return kStatusExists;
    case ENOTDIR:
        return -120;
    case EACCES:
    case EPERM:
        return -5000;
    case ENOSPC:
    case EDQUOT:
        return -34;
    case EROFS:
        return -44;
    case ENAMETOOLONG:
    case EILSEQ: // what file systems say to an illegal name
        return -37;
    case EBUSY:
    case ENOTEMPTY:
        return -47;
    case EXDEV:
        return -1303;
    case EMFILE:
    case ENFILE:
        return -42;
    case ELOOP:
        return -1043;
    case EINVAL:
        return kStatusBadParameter;
    case ENODEV:
    case ENXIO:
        return -35;
    default:
        return kStatusIO;
    }
}

NSRef<NSError> errorWithStatus(OSStatus status)
{
    return NSError::errorWithDomain(NSOSStatusErrorDomain, status);
}

bool fail(NSRef<NSError>* error, OSStatus status)
{
    if (error)
        *error = errorWithStatus(status);
    return false;
}

}
