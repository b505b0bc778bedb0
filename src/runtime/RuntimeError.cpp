#include "runtime/RuntimeError.h"

namespace zarn {

const char* ErrorText(ErrorNumber number) noexcept {
    switch (number) {
        case ErrorNumber::Overflow:
            return "Overflow";
        case ErrorNumber::SubscriptOutOfRange:
            return "Subscript out of range";
        case ErrorNumber::DivisionByZero:
            return "Division by zero";
        case ErrorNumber::TypeMismatch:
            return "Type mismatch";
        case ErrorNumber::UserInterrupt:
            return "User interrupt occurred";
        case ErrorNumber::ErrorLoadingLibrary:
            return "Error in loading DLL";
        case ErrorNumber::BadFileNameOrNumber:
            return "Bad file name or number";
        case ErrorNumber::FileNotFound:
            return "File not found";
        case ErrorNumber::DeviceIOError:
            return "Device I/O error";
        case ErrorNumber::FileAlreadyExists:
            return "File already exists";
        case ErrorNumber::DiskFull:
            return "Disk full";
        case ErrorNumber::TooManyFiles:
            return "Too many files";
        case ErrorNumber::DeviceUnavailable:
            return "Device unavailable";
        case ErrorNumber::PermissionDenied:
            return "Permission denied";
        case ErrorNumber::DiskNotReady:
            return "Disk not ready";
        case ErrorNumber::PathFileAccessError:
            return "Path/File access error";
        case ErrorNumber::PathNotFound:
            return "Path not found";
    }
    return "";
}

}  // namespace zarn
