#pragma once

#include <optional>

#include "runtime/RuntimeError.h"

namespace zarn::testing {

/// The error that a call raises; nothing if it returns.
template <typename Call>
[[nodiscard]] std::optional<ErrorNumber> ErrorOf(const Call& call) {
    try {
        call();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return std::nullopt;
}

}  // namespace zarn::testing
