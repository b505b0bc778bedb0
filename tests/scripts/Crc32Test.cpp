#include "scripts/Crc32.h"
#include "scripts/FileChecksum.h"
#include "scripts/clsCRC32.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

std::span<const std::byte> Bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

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

std::uint32_t InChunks(const Crc32& crc, std::span<const std::byte> data, std::size_t chunk) {
    std::uint32_t running = Crc32::InitialValue;
    for (; data.size() > chunk; data = data.subspan(chunk)) {
        running = crc.CRCUpdate(data.first(chunk), running);
    }
    return crc.CRCUpdate(data, running);
}

class Crc32Test : public ::testing::TestWithParam<Crc32::Method> {};

TEST_P(Crc32Test, EveryLengthAtEveryAddressAndInAnyChunks) {
    Crc32 crc(GetParam());
    EXPECT_EQ(crc.CRCTableBuild(Crc32::IeeePolynomial, 5), 5);
    const std::string text = TestBytes(100000);
    const std::span<const std::byte> all = Bytes(text);
    for (std::size_t start = 0; start < 32; ++start) {
        std::uint32_t expected = Crc32::InitialValue;
        for (std::size_t length = 0; length <= 300; ++length) {
            ASSERT_EQ(InChunks(crc, all.subspan(start, length), 1000), expected)
                << length << " from " << start;
            expected = BitByBit(all.subspan(start + length, 1), expected);
        }
    }
    const std::uint32_t whole = BitByBit(all, Crc32::InitialValue);
    for (const std::size_t chunk : {7U, 64U, 127U, 128U, 129U, 1000U, 4096U, 100000U}) {
        EXPECT_EQ(InChunks(crc, all, chunk), whole) << chunk;
    }
    EXPECT_EQ(Crc32::CRCFinal(InChunks(crc, Bytes("123456789"), 9)), 0xCBF43926);
    constexpr std::uint32_t Castagnoli = 0x82F63B78;
    crc.CRCTableBuild(Castagnoli, 0);
    EXPECT_EQ(InChunks(crc, all, 4096), BitByBit(all, Crc32::InitialValue, Castagnoli));
}

INSTANTIATE_TEST_SUITE_P(Methods, Crc32Test,
                         ::testing::Values(Crc32::Method::SlicedTable, Crc32::Method::Folding128,
                                           Crc32::Method::Folding256));

struct FileChecksumTest : public ::testing::Test {
    TestPlatform test;
    TestFolder folder;
};

TEST_F(FileChecksumTest, OfAFileOrTheReasonThatThereIsNone) {
    folder.Write("empty", "");
    folder.Write("digits", "123456789");
    folder.Write("zeros ahead", "\xEF\x4B\x84\x5E");
    folder.Write("large", TestBytes(600001));
    folder.MakeFolder("folder");
    double large = ~BitByBit(Bytes(TestBytes(600001)), Crc32::InitialValue);
    const std::string largeText = FormatCRCHex(large);
    EXPECT_EQ(large, 0) << "the value is used up";
    using Case = std::pair<const char*, std::string>;
    for (const auto& [name, text] :
         {Case("missing", "53 ERROR "), Case("missing\\file", "76 ERROR "),
          Case("folder", "75 ERROR "), Case("empty", "0"), Case("digits", "CBF43926"),
          Case("zeros ahead", "ABCDEF"), Case("large", largeText)}) {
        EXPECT_EQ(CalcCRC32(*test.platform.fileSystem, folder.Drive(name)), text) << name;
    }
}

TEST_F(FileChecksumTest, TheEngineForgetsAnErrorWithTheNextFile) {
    folder.Write("digits", "123456789");
    clsCRC32 engine(*test.platform.fileSystem);
    double crc = 1;
    std::int16_t success = 1;
    std::int32_t code = 1;
    engine.FileCRC(folder.Drive("missing"), crc, success);
    engine.LastError(code);
    EXPECT_EQ(std::tuple(crc, success, code), std::tuple(0, 0, 53));
    engine.FileCRC(folder.Drive("digits"), crc, success);
    engine.LastError(code);
    EXPECT_EQ(std::tuple(crc, success, code), std::tuple(0xCBF43926, -1, 0));
}

}  // namespace
}  // namespace zarn::testing
