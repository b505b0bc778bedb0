#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "support/TestFolder.h"

namespace zarn::testing {

namespace fs = std::filesystem;

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
