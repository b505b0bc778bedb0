#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "scripts/CrcFolding.h"

namespace zarn {

/// The reflected CRC-32, table-driven; with `IeeePolynomial` that of IEEE 802.3, which ZIP and SFV
/// use. Call `CRCTableBuild` first, `CRCUpdate` as often as needed, `CRCFinal` once.
class Crc32 {
  public:
    static constexpr std::uint32_t IeeePolynomial = 0xEDB88320;
    static constexpr std::uint32_t InitialValue = 0xFFFFFFFF;

    /// How the bulk of the bytes is worked through, the slowest first.
    enum class Method {
        /// 8 bytes at a time, on any processor, after M. Kounavis and F. Berry, "A Systematic
        /// Approach to Building High Performance, Software-based, CRC Generators" (Intel, 2005).
        SlicedTable,
        Folding128,  ///< carry-less multiplication in 128-bit lanes
        Folding256,  ///< the same in 256-bit lanes
    };

    /// The fastest method that this processor has.
    [[nodiscard]] static Method FastestMethod();

    /// A method that this processor lacks gives way to the table.
    explicit Crc32(Method method = FastestMethod());

    /// Fills the table for a reflected polynomial and returns `seed`, for the running value to
    /// start with. Another polynomial than IEEE 802.3's is worked by the table alone.
    std::uint32_t CRCTableBuild(std::uint32_t polynomial, std::uint32_t seed);

    /// Feeds all bytes in their order and returns the new running value.
    [[nodiscard]] std::uint32_t CRCUpdate(std::span<const std::byte> data,
                                          std::uint32_t running) const;

    /// The bitwise complement.
    [[nodiscard]] static std::uint32_t CRCFinal(std::uint32_t running) { return ~running; }

  private:
    using Table = std::array<std::uint32_t, 256>;

    [[nodiscard]] std::uint32_t UpdateByTable(std::span<const std::byte> data,
                                              std::uint32_t running) const;

    FoldFunction fold_;              ///< null for the table alone
    bool isIeee_ = false;            ///< the table is that of the polynomial that can be folded
    std::array<Table, 8> tables_{};  ///< the table, and its values moved on by 1 to 7 zero bytes
};

}  // namespace zarn
