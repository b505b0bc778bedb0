#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "runtime/RuntimeError.h"
#include "support/TestFolder.h"

namespace zarn::testing {

using Names = std::vector<std::string>;

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
