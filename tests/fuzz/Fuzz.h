#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Runs one input. Returns 0; a broken rule ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace zarn::fuzz {

/// Ends the process, with the rule on standard error, unless the rule holds.
inline void Require(bool holds, const char* rule) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "broken: %s\n", rule));
        std::abort();
    }
}

[[nodiscard]] inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Takes the first byte off; 0 where there is none. Its bits say how the rest is to be run.
[[nodiscard]] inline unsigned TakeByte(std::string_view& text) {
    if (text.empty()) {
        return 0;
    }
    const auto byte = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    return byte;
}

}  // namespace zarn::fuzz
