#include "scripts/Crc32.h"

#include <algorithm>

namespace zarn {

namespace {

constexpr std::uint32_t LowByte = 0xFF;

FoldFunction FoldingOf(Crc32::Method method) {
    switch (method) {
        case Crc32::Method::Folding256:
            return FoldingIn256Bits();
        case Crc32::Method::Folding128:
            return FoldingIn128Bits();
        case Crc32::Method::SlicedTable:
            break;
    }
    return nullptr;
}

std::uint32_t LittleEndian(std::span<const std::byte, 4> bytes) {
    return std::to_integer<std::uint32_t>(bytes[0]) |
           std::to_integer<std::uint32_t>(bytes[1]) << 8U |
           std::to_integer<std::uint32_t>(bytes[2]) << 16U |
           std::to_integer<std::uint32_t>(bytes[3]) << 24U;
}

}  // namespace

Crc32::Crc32(Method method) : fold_(FoldingOf(method)) {
}

Crc32::Method Crc32::FastestMethod() {
    if (FoldingIn256Bits() != nullptr) {
        return Method::Folding256;
    }
    return FoldingIn128Bits() != nullptr ? Method::Folding128 : Method::SlicedTable;
}

std::uint32_t Crc32::CRCTableBuild(std::uint32_t polynomial, std::uint32_t seed) {
    Table& first = tables_.front();
    std::uint32_t index = 0;
    for (std::uint32_t& value : first) {
        value = index++;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value >> 1U) ^ ((value & 1U) != 0 ? polynomial : 0);
        }
    }
    for (std::size_t slice = 1; slice < tables_.size(); ++slice) {
        std::ranges::transform(
            tables_[slice - 1], tables_[slice].begin(),
            [&first](std::uint32_t before) { return (before >> 8U) ^ first[before & LowByte]; });
    }
    isIeee_ = polynomial == IeeePolynomial;
    return seed;
}

std::uint32_t Crc32::CRCUpdate(std::span<const std::byte> data, std::uint32_t running) const {
    if (fold_ == nullptr || !isIeee_ || data.size() < LeastToFold) {
        return UpdateByTable(data, running);
    }
    const FoldedBytes folded = fold_(data, running);
    return UpdateByTable(data.subspan(folded.taken), UpdateByTable(folded.bytes, 0));
}

std::uint32_t Crc32::UpdateByTable(std::span<const std::byte> data, std::uint32_t running) const {
    for (; data.size() >= 8; data = data.subspan(8)) {
        const std::uint32_t low = running ^ LittleEndian(data.first<4>());
        const std::uint32_t high = LittleEndian(data.subspan<4, 4>());
        running = tables_[7][low & LowByte] ^ tables_[6][(low >> 8U) & LowByte] ^
                  tables_[5][(low >> 16U) & LowByte] ^ tables_[4][low >> 24U] ^
                  tables_[3][high & LowByte] ^ tables_[2][(high >> 8U) & LowByte] ^
                  tables_[1][(high >> 16U) & LowByte] ^ tables_[0][high >> 24U];
    }
    for (const std::byte byte : data) {
        running = (running >> 8U) ^
                  tables_[0][(running & LowByte) ^ std::to_integer<std::uint32_t>(byte)];
    }
    return running;
}

}  // namespace zarn
