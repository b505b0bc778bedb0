#include "platform/linux/ErrnoError.h"

#include <cerrno>

namespace zarn {

ErrorNumber ErrorOfErrno(int error, ErrorNumber missing) noexcept {
    switch (error) {
        case ENOENT:
            return missing;
        case ENOTDIR:
            return ErrorNumber::PathNotFound;
        case EEXIST:
            return ErrorNumber::FileAlreadyExists;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return ErrorNumber::DiskFull;
        case EACCES:
        case EPERM:
        case EROFS:
            return ErrorNumber::PermissionDenied;
        case EIO:
            return ErrorNumber::DeviceIOError;
        case EMFILE:
        case ENFILE:
            return ErrorNumber::TooManyFiles;
        case ENODEV:
        case ENXIO:
            return ErrorNumber::DeviceUnavailable;
        case ENAMETOOLONG:
        case EINVAL:
            return ErrorNumber::BadFileNameOrNumber;
        default:
            return ErrorNumber::PathFileAccessError;
    }
}

void RaiseErrno(int error, ErrorNumber missing) {
    throw RuntimeError(ErrorOfErrno(error, missing));
}

}  // namespace zarn
