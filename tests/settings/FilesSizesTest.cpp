#include "settings/FilesFixture.h"

namespace zarn::testing {
namespace {

const LocaleSeparators english;
const LocaleSeparators german{",", ".", "-", ":"};

struct RecordingFields : public PieceSizeFields {
    void SelectOptMB() override { calls += "OptMB "; }
    std::string txtPartsNumber() override {
        calls += "txtPartsNumber ";
        return parts;
    }

    std::string parts;
    std::string calls;
};

struct FilesSizes : public FilesFixture {
    /// A file with a hole of that size.
    [[nodiscard]] std::string Sized(std::uint64_t size) const {
        folder.Write("file", "");
        fs::resize_file(folder.System("file"), size);
        return folder.Drive("file");
    }
};

TEST_F(FilesSizes, TextsOfFiles) {
    using Case = std::tuple<std::uint64_t, std::string, std::string>;
    for (const auto& [size, text, grid] :
         {Case(0, "", "0 Bytes"), Case(512, "size : 512.00 Bytes", "512 Bytes"),
          Case(1000, "size : 1,000.00 Bytes", "2 KB"),
          Case(1001, "size : 0.98 KB (1,001 Bytes)", "2 KB"),
          Case(1000000, "size : 976.56 KB (1,000,000 Bytes)", "978 KB"),
          Case(1000001, "size : 0.95 MB (1,000,001 Bytes)", "978 KB"),
          Case(1000000000, "size : 953.67 MB (1,000,000,000 Bytes)", "976,563 KB"),
          Case(1000000001, "size : 0.93 GB (1,000,000,001 Bytes)", "976,564 KB"),
          Case(5 * Giga, "size : 5.00 GB (5,368,709,120 Bytes)", "5,242,880 KB")}) {
        const std::string path = Sized(size);
        EXPECT_EQ(files.FileSizeText(path), text);
        EXPECT_EQ(files.FunctionFileSizeGrid(path), grid) << size;
        EXPECT_EQ(files.FunctionFileJoinSize(path), static_cast<double>(size));
    }
    separators = german;
    EXPECT_EQ(files.FileSizeText(Sized(512)), "size : 512,00 Bytes");
    EXPECT_EQ(files.FileSizeText(Sized(5 * Giga)), "size : 5,00 GB (5.368.709.120 Bytes)");
    EXPECT_EQ(files.FileSizeText(none) + files.FunctionFileSizeGrid(none), "***");
    EXPECT_EQ(files.FunctionFileJoinSize(none), 0);
}

TEST_F(FilesSizes, TextsOfNumbersAndWhatIsLeftInTheVariable) {
    using Case = std::tuple<double, std::string, double, std::string>;
    for (const auto& [size, text, left, converted] :
         {Case(0.9, "0 Bytes", 0.9, "0.90 Bytes"), Case(999.9, "999 Bytes", 999.9, "999.90 Bytes"),
          Case(1000, "2 KB", 2, "1,000.00 Bytes"), Case(1023.999995, "2 KB", 2, "1.00 KB"),
          Case(1024, "1 KB", 1, "1.00 KB"), Case(1.2 * 1024, "2 KB", 2, "1.20 KB"),
          Case(1536, "3 KB", 3, "1.50 KB"), Case(1.7 * 1024, "3 KB", 3, "1.70 KB"),
          Case(2560, "3 KB", 3, "2.50 KB"), Case(Mega - 1.0, "1,025 KB", 1025, "1,024.00 KB"),
          Case(Mega - 0.005, "1,025 KB", 1025, "1.00 MB"),
          Case(2048.0 * Giga, "2,147,483,648 KB", 2147483648, "2,048.00 GB")}) {
        double variable = size;
        EXPECT_EQ(files.FunctionFileJoinConvertSize(variable), converted) << size;
        EXPECT_EQ(files.FunctionFileSizeFormated(variable), text) << size;
        EXPECT_EQ(variable, left) << size;
    }
}

TEST_F(FilesSizes, MegabytesAndTheLeastSizeToSplit) {
    for (const auto& [size, megabytes] :
         {std::pair(5242U, 0.0), std::pair(5243U, 0.01), std::pair(11010048U, 10.5)}) {
        EXPECT_EQ(files.FileSizeMBytes(Sized(size)), megabytes);
        EXPECT_EQ(files.CheckFileSize(folder.Drive("file")), megabytes > 0) << size;
    }
    EXPECT_TRUE(files.CheckFileSize("  "));
    EXPECT_FALSE(files.CheckFileSize(none));
    EXPECT_EQ(files.FileSizeMBytes(none) + files.FileSizeGBytes(none) + files.FileSizeGBytes(""),
              0);
    EXPECT_TRUE(test.boxes->shown.empty());
}

TEST_F(FilesSizes, GigabytesTurnToMegabytesForASmallFile) {
    RecordingFields fields;
    files.UsePieceSizeFields(&fields);
    using Case = std::tuple<std::uint64_t, LocaleSeparators, std::string, double, bool>;
    for (const auto& [size, locale, parts, result, isSmall] :
         {Case(10737419, english, "4", 0.01, false), Case(10737418, english, "", 10.24, true),
          Case(Giga / 2, english, "4x", 0.5, false), Case(10 * Mega, english, "4", 2.5, true),
          Case(3 * Giga / 2, german, "4", 1.5, false), Case(10 * Mega, english, "0", 10, true),
          Case(10 * Mega, english, "x4", 10, true), Case(Giga / 2, german, "2,5", 204.8, true),
          Case(1000, english, "4", 0, true)}) {
        separators = locale;
        fields.parts = parts;
        fields.calls.clear();
        test.boxes->shown.clear();
        EXPECT_EQ(files.FileSizeGBytes(Sized(size)), result) << size << " " << parts;
        EXPECT_EQ(fields.calls, isSmall ? "OptMB txtPartsNumber " : "");
        EXPECT_EQ(test.boxes->shown.size(), isSmall ? 1U : 0U);
    }
    EXPECT_EQ(test.boxes->shown.at(0).title + ": " + test.boxes->shown.at(0).text,
              "Error: Current file is too small for (Gb), (Mb) will be used ... ");
    fields.parts = "4x";
    EXPECT_EQ(ErrorOf([this] { return files.FileSizeGBytes(Sized(Mega)); }),
              ErrorNumber::TypeMismatch);
    files.UsePieceSizeFields(nullptr);
    EXPECT_EQ(files.FileSizeGBytes(Sized(3 * Mega)), 3);
    EXPECT_EQ(test.boxes->shown.size(), 3U);
}

}  // namespace
}  // namespace zarn::testing
