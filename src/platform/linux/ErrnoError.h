#pragma once

#include "runtime/RuntimeError.h"

namespace zarn {

/// The run time's number for a value of `errno`. `missing` is what ENOENT stands for: the file,
/// or its folder where the call would have made the file.
[[nodiscard]] ErrorNumber ErrorOfErrno(int error,
                                       ErrorNumber missing = ErrorNumber::FileNotFound) noexcept;

/// Throws the `RuntimeError` of a value of `errno`.
[[noreturn]] void RaiseErrno(int error, ErrorNumber missing = ErrorNumber::FileNotFound);

}  // namespace zarn
