#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zarn {

/// What a run of bytes came down to. A CRC register that starts at zero and is fed `bytes` holds
/// what one that was fed the first `taken` bytes of the run would hold.
struct FoldedBytes {
    std::array<std::byte, 16> bytes{};
    std::size_t taken = 0;
};

/// Folds `data`, of at least `LeastToFold` bytes at any address, for the reflected CRC-32 of
/// IEEE 802.3. `running` is the register before them. At most 15 bytes are left over.
using FoldFunction = FoldedBytes (*)(std::span<const std::byte> data, std::uint32_t running);

inline constexpr std::size_t LeastToFold = 128;

/// Folding by carry-less multiplication in lanes of 128 and of 256 bits, after V. Gopal and others,
/// "Fast CRC Computation for Generic Polynomials Using PCLMULQDQ Instruction" (Intel, 2009). Null
/// where the processor lacks the instructions.
[[nodiscard]] FoldFunction FoldingIn128Bits();
[[nodiscard]] FoldFunction FoldingIn256Bits();

}  // namespace zarn
