#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace zarn::fuzz {

/// What a fuzz program defines: runs one input. A broken rule ends the process.
void RunInput(std::string_view input);

/// Ends the process, with the rule on standard error, unless the rule holds.
inline void Require(bool holds, const char* rule) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "broken: %s\n", rule));
        std::abort();
    }
}

/// Takes the first byte off; 0 where there is none. Its bits say how the rest is to be run.
[[nodiscard]] inline unsigned TakeByte(std::string_view& text) {
    const unsigned byte = text.empty() ? 0 : static_cast<unsigned char>(text.front());
    text.remove_prefix(text.empty() ? 0 : 1);
    return byte;
}

}  // namespace zarn::fuzz
