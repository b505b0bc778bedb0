#pragma once

#include <cerrno>

#include "runtime/RuntimeError.h"

namespace zarn {

/// The run time's number for a value of `errno`. `missing` is what ENOENT stands for: the file,
/// or its folder where the call would have made the file.
[[nodiscard]] ErrorNumber ErrorOfErrno(int error,
                                       ErrorNumber missing = ErrorNumber::FileNotFound) noexcept;

/// The result of a call of the system, which is made again where a signal breaks in.
template <typename Call>
auto Repeated(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Throws the `RuntimeError` of a value of `errno`.
[[noreturn]] void RaiseErrno(int error, ErrorNumber missing = ErrorNumber::FileNotFound);

}  // namespace zarn
