#include "scripts/CrcFolding.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include "scripts/Crc32.h"

namespace zarn {

namespace {

/// x to the power of `bits` modulo the polynomial, as a factor for reflected values: the product of
/// two of them lies one bit too low, which the shift makes up for.
constexpr std::int64_t PowerOfX(unsigned bits) {
    std::uint32_t power = 0x80000000;
    for (; bits > 0; --bits) {
        power = (power >> 1U) ^ ((power & 1U) != 0 ? Crc32::IeeePolynomial : 0);
    }
    return std::int64_t{power} << 1U;
}
static_assert(PowerOfX(96) == 0x0CCAA009E);
static_assert(PowerOfX(160) == 0x1751997D0);

/// The factors that carry 16 bytes over a distance: the low half lies 64 bits further away, and
/// both products come out 32 bits further on than their factors.
struct Carry {
    std::int64_t high;
    std::int64_t low;
};
constexpr Carry CarryOver(unsigned bytes) {
    return {.high = PowerOfX(bytes * 8 - 32), .low = PowerOfX(bytes * 8 + 32)};
}
constexpr Carry Over16 = CarryOver(16);
constexpr Carry Over32 = CarryOver(32);
constexpr Carry Over64 = CarryOver(64);
constexpr Carry Over128 = CarryOver(128);

__m128i Load(std::span<const std::byte> data, std::size_t at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data.data() + at));
}

__m128i Factors(const Carry& carry) {
    return _mm_set_epi64x(carry.high, carry.low);
}

[[gnu::target("pclmul")]] inline __m128i Fold(__m128i folded, __m128i factors, __m128i next) {
    const __m128i low = _mm_clmulepi64_si128(folded, factors, 0x00);
    const __m128i high = _mm_clmulepi64_si128(folded, factors, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, high), next);
}

/// Folds the 16 bytes that stand for the first `taken` ones over what is left of `data`.
[[gnu::target("pclmul")]] inline FoldedBytes FoldRest(__m128i folded,
                                                      std::span<const std::byte> data,
                                                      std::size_t taken) {
    const __m128i factors = Factors(Over16);
    for (; data.size() - taken >= 16; taken += 16) {
        folded = Fold(folded, factors, Load(data, taken));
    }
    FoldedBytes result{.taken = taken};
    _mm_storeu_si128(reinterpret_cast<__m128i*>(result.bytes.data()), folded);
    return result;
}

// Four lanes at once, since a product takes several times as long as the pause between two.
[[gnu::target("pclmul")]] FoldedBytes Fold128(std::span<const std::byte> data,
                                              std::uint32_t running) {
    const __m128i seed = _mm_cvtsi32_si128(static_cast<int>(running));
    __m128i first = _mm_xor_si128(Load(data, 0), seed);
    __m128i second = Load(data, 16);
    __m128i third = Load(data, 32);
    __m128i fourth = Load(data, 48);
    std::size_t taken = 64;
    const __m128i overAll = Factors(Over64);
    for (; data.size() - taken >= 64; taken += 64) {
        first = Fold(first, overAll, Load(data, taken));
        second = Fold(second, overAll, Load(data, taken + 16));
        third = Fold(third, overAll, Load(data, taken + 32));
        fourth = Fold(fourth, overAll, Load(data, taken + 48));
    }
    const __m128i overOne = Factors(Over16);
    second = Fold(first, overOne, second);
    third = Fold(second, overOne, third);
    return FoldRest(Fold(third, overOne, fourth), data, taken);
}

[[gnu::target("avx2")]] inline __m256i LoadWide(std::span<const std::byte> data, std::size_t at) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(data.data() + at));
}

[[gnu::target("avx2")]] inline __m256i WideFactors(const Carry& carry) {
    return _mm256_broadcastsi128_si256(Factors(carry));
}

[[gnu::target("vpclmulqdq,avx2")]] inline __m256i FoldWide(__m256i folded, __m256i factors,
                                                           __m256i next) {
    const __m256i low = _mm256_clmulepi64_epi128(folded, factors, 0x00);
    const __m256i high = _mm256_clmulepi64_epi128(folded, factors, 0x11);
    return _mm256_xor_si256(_mm256_xor_si256(low, high), next);
}

[[gnu::target("vpclmulqdq,pclmul,avx2")]] FoldedBytes Fold256(std::span<const std::byte> data,
                                                              std::uint32_t running) {
    const __m256i seed = _mm256_zextsi128_si256(_mm_cvtsi32_si128(static_cast<int>(running)));
    __m256i first = _mm256_xor_si256(LoadWide(data, 0), seed);
    __m256i second = LoadWide(data, 32);
    __m256i third = LoadWide(data, 64);
    __m256i fourth = LoadWide(data, 96);
    std::size_t taken = 128;
    const __m256i overAll = WideFactors(Over128);
    for (; data.size() - taken >= 128; taken += 128) {
        first = FoldWide(first, overAll, LoadWide(data, taken));
        second = FoldWide(second, overAll, LoadWide(data, taken + 32));
        third = FoldWide(third, overAll, LoadWide(data, taken + 64));
        fourth = FoldWide(fourth, overAll, LoadWide(data, taken + 96));
    }
    const __m256i overOne = WideFactors(Over32);
    second = FoldWide(first, overOne, second);
    third = FoldWide(second, overOne, third);
    fourth = FoldWide(third, overOne, fourth);
    const __m128i folded =
        Fold(_mm256_castsi256_si128(fourth), Factors(Over16), _mm256_extracti128_si256(fourth, 1));
    return FoldRest(folded, data, taken);
}

}  // namespace

FoldFunction FoldingIn128Bits() {
    return __builtin_cpu_supports("pclmul") != 0 ? &Fold128 : nullptr;
}

FoldFunction FoldingIn256Bits() {
    const bool wide = __builtin_cpu_supports("vpclmulqdq") != 0 &&
                      __builtin_cpu_supports("avx2") != 0 && FoldingIn128Bits() != nullptr;
    return wide ? &Fold256 : nullptr;
}

}  // namespace zarn

#else

namespace zarn {

FoldFunction FoldingIn128Bits() {
    return nullptr;
}

FoldFunction FoldingIn256Bits() {
    return nullptr;
}

}  // namespace zarn

#endif
