#include "scripts/Crc32.h"
#include "scripts/FileChecksum.h"
#include "scripts/clsCRC32.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

/// The register after a few more bytes, one bit at a time.
std::uint32_t BitByBit(std::span<const std::byte> data, std::uint32_t running,
                       std::uint32_t polynomial = Crc32::IeeePolynomial) {
    for (const std::byte byte : data) {
        running ^= std::to_integer<std::uint32_t>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            running = (running >> 1U) ^ ((running & 1U) != 0 ? polynomial : 0);
        }
    }
    return running;
}

class Crc32Test : public ::testing::TestWithParam<Crc32::Method> {};

TEST_P(Crc32Test, EveryLengthAtEveryAddressAndInAnyChunks) {
    Crc32 crc(GetParam());
    EXPECT_EQ(crc.CRCTableBuild(Crc32::IeeePolynomial, 5), 5);
    const std::string text = TestBytes(100000);
    const std::span<const std::byte> all = std::as_bytes(std::span(text));
    for (std::size_t start = 0; start < 32; ++start) {
        std::uint32_t expected = Crc32::InitialValue;
        for (std::size_t length = 0; length <= 300; ++length) {
            ASSERT_EQ(crc.CRCUpdate(all.subspan(start, length), Crc32::InitialValue), expected)
                << length << " from " << start;
            expected = BitByBit(all.subspan(start + length, 1), expected);
        }
    }
    for (const std::size_t chunk : {7U, 64U, 127U, 128U, 129U, 1000U, 4096U, 100000U}) {
        std::uint32_t running = Crc32::InitialValue;
        for (std::size_t at = 0; at < all.size(); at += chunk) {
            running = crc.CRCUpdate(all.subspan(at, std::min(chunk, all.size() - at)), running);
        }
        EXPECT_EQ(running, BitByBit(all, Crc32::InitialValue)) << chunk;
    }
    constexpr std::uint32_t Castagnoli = 0x82F63B78;
    crc.CRCTableBuild(Castagnoli, 0);
    EXPECT_EQ(crc.CRCUpdate(all, 0), BitByBit(all, 0, Castagnoli));
}

INSTANTIATE_TEST_SUITE_P(Methods, Crc32Test,
                         ::testing::Values(Crc32::Method::SlicedTable, Crc32::Method::Folding128,
                                           Crc32::Method::Folding256));

TEST(FileChecksumTest, OfAFileOrTheReasonThatThereIsNone) {
    const TestPlatform test;
    FileSystem& files = *test.platform.fileSystem;
    const TestFolder folder;
    const std::string large = TestBytes(524289);
    folder.Write("empty", "");
    folder.Write("digits", "123456789");
    folder.Write("zeros ahead", "\xEF\x4B\x84\x5E");
    folder.Write("large", large);
    folder.MakeFolder("folder");
    double whole = ~BitByBit(std::as_bytes(std::span(large)), Crc32::InitialValue);
    const std::string largeText = FormatCRCHex(whole);
    using Case = std::pair<const char*, std::string>;
    for (const auto& [name, text] :
         {Case("missing", "53 ERROR "), Case("missing\\file", "76 ERROR "),
          Case("folder", "75 ERROR "), Case("empty", "0"), Case("digits", "CBF43926"),
          Case("zeros ahead", "ABCDEF"), Case("large", largeText)}) {
        EXPECT_EQ(CalcCRC32(files, folder.Drive(name)), text) << name;
    }
    // It forgets an error with the next file.
    clsCRC32 engine(files);
    double crc = 1;
    std::int16_t success = 1;
    std::int32_t code = 1;
    for (const auto& [name, expected] : {std::pair("missing", std::tuple(0.0, 0, 53)),
                                         std::pair("digits", std::tuple(3421780262.0, -1, 0))}) {
        engine.FileCRC(folder.Drive(name), crc, success);
        engine.LastError(code);
        EXPECT_EQ(std::tuple(crc, success, code), expected);
    }
}

}  // namespace
}  // namespace zarn::testing
