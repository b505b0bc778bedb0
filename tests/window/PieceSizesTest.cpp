#include "support/Prelude.h"
#include "window/PieceSizes.h"

namespace zarn {
namespace {

constexpr std::string_view PresetRows =
    "1.44 MB - Diskette=1454236\n"
    "100 MB - Zip Drive=104857600\n"
    "250 MB - Zip Drive=262144000\n"
    "700 MB - CD-R=734003200\n"
    "800 MB - CD-R=838860800\n"
    "4.7 GB - DVD-R=4\n"
    "8.5 GB - DVD-R=8\n";

std::string ListOf(std::string_view stored) {
    std::string list;
    for (const PieceSizeRow& row : PieceSizeRows(stored)) {
        list += row.text + "=" + std::to_string(row.itemData) + "\n";
    }
    return list;
}

TEST(PieceSizes, StoredSizesStandBetweenTheFirstRowAndThePresets) {
    for (const auto& [stored, rows] :
         {std::pair("", ""), std::pair("650 MB|681574400", "650 MB=681574400\n"),
          std::pair("1.5 GB|1610612736;", "1.5 GB=1610612736\n"),
          std::pair("1 MB|1;2 MB|2;3 MB|3;4 MB|4", "1 MB=1\n2 MB=2\n3 MB=3\n"),
          std::pair("none;;1 MB|1;2 MB;3 MB|3", "1 MB=1\n3 MB=3\n"),
          std::pair("100 MB|1;x|0;y|;9 MB|9", ""),
          std::pair("1.44 MB|1;250 MB|1;9 MB|9", "9 MB=9\n"),
          std::pair("700 MB|1;800 MB|1;4.7 GB|1", ""), std::pair("8.5 GB|1;1250 MB|1;|7", "=7\n"),
          std::pair("a|1.5;b|2.5;c|314572.8", "a=2\nb=2\nc=314573\n"),
          std::pair("a|12 bytes;b|-4;c|5|6", "a=12\nc=5\n"),
          std::pair("a|2147483647", "a=2147483647\n")}) {
        EXPECT_EQ(ListOf(stored),
                  "Type Custom Size ...=0\n" + std::string(rows) + std::string(PresetRows))
            << stored;
    }
    for (const char* stored : {"2 GB|2147483648", "1 MB|1;x|2147483647.5"}) {
        EXPECT_EQ(testing::ErrorOf([&] { return ListOf(stored); }), ErrorNumber::Overflow)
            << stored;
    }
    EXPECT_EQ(ListOf("1|1;2|2;3|3;2 GB|2147483648").find("2 GB"), std::string::npos);
}

TEST(PieceSizes, AJobPutsItsSizeFirstAndKeepsPlaces) {
    constexpr auto MB = SizeUnit::Megabytes;
    constexpr auto GB = SizeUnit::Gigabytes;
    using Rows = std::vector<std::string>;
    const Rows three = {"1 MB", "2 MB", "3 MB"};
    const std::string two = "1 MB|1048576;2 MB|2097152";  // where a third older size falls out
    using Case = std::tuple<const char*, Rows, SizeUnit, std::string>;
    for (const auto& [text, customRows, unit, stored] :
         {Case("650 MB", {}, MB, "650 MB|681574400"), Case("650", {}, MB, "650 MB|681574400"),
          Case("2 GB", {}, GB, "2 GB|2147483648"), Case("1.5 GB", {}, MB, "1.5 MB|1572864"),
          Case("0.0091", {}, MB, "0.0091 MB|9542.0416"), Case("1,5", {}, MB, "1 MB|1048576"),
          Case("5MB3", {}, MB, "53 MB|55574528"), Case("0.009", {"1 MB"}, MB, "1 MB|1048576"),
          Case("", {}, MB, ""),
          // A preset's job leaves the first place empty, and so does a typed size that holds one's.
          Case("5", three, MB, "5 MB|5242880;" + two), Case("700 MB - CD-R", three, MB, two),
          Case("1.44 MB - Diskette", {}, MB, ""),
          Case("100 MB - Zip Drive", {"9 MB"}, MB, "9 MB|9437184"),
          Case("4.7 GB - DVD-R", {}, GB, ""), Case("100", three, MB, two),
          Case("2100 MB", {}, MB, ""), Case("4.7", {}, GB, ""),
          Case("4.7", {}, MB, "4.7 MB|4928307.2"),
          // An equal size further back loses its place for good.
          Case("2", three, MB, "2 MB|2097152;1 MB|1048576"),
          Case("1", {"1024 MB", "3 MB"}, GB, "1 GB|1073741824;3 MB|3145728"),
          Case("5", {"1 GB", "1024 MB"}, MB, "5 MB|5242880;1 GB|1073741824"),
          // Rows as a hand may have written them.
          Case("5", {"12"}, MB, "5 MB|5242880;12MB|12582912"),
          Case("5", {"12"}, GB, "5 GB|5368709120;12GB|12884901888"),
          Case("5", {"3  MB"}, MB, "5 MB|5242880;3 MB|3145728"),
          Case("5", {"some MB", "3 MB"}, MB, "5 MB|5242880;3 MB|3145728"),
          Case("5", {"some MB"}, MB, "5 MB|5242880;some MB|0")}) {
        Rows rows = customRows;
        for (const PieceSizeRow& row : PieceSizeRows("")) {
            rows.push_back(row.text);
        }
        EXPECT_EQ(MergedCustomSizes(text, rows, unit), stored) << text;
    }
}

TEST(PieceSizes, FieldTexts) {
    EXPECT_EQ(UpperUnitLetters("1 mb 2 Mb 3 mB 4 MB 5 gb 6 Gb 7 gB m b"),
              "1 MB 2 MB 3 MB 4 MB 5 GB 6 GB 7 GB m b");
    EXPECT_EQ(SizeText("4.7 GB - DVD-R", SizeUnit::Gigabytes), "4.7 GB");
    EXPECT_EQ(SizeText("1.44 MB - Diskette", SizeUnit::Megabytes), "1.44 MB");
    EXPECT_EQ(SizeText(" 0650.50", SizeUnit::Megabytes), "650.5 MB");
    EXPECT_EQ(SizeText("", SizeUnit::Megabytes), "0 MB");
}

TEST(PieceSizes, CountsAreWholeNumbers) {
    for (const auto& [text, whole, count] :
         {std::tuple("5", "5", 5), std::tuple("2.5", "25", 25), std::tuple("2,5", "25", 25),
          std::tuple("1.200,5", "12005", 12005), std::tuple("0.5", "05", 5),
          std::tuple("0,5", "0,5", 0), std::tuple("0", "0", 0), std::tuple("", "", 0),
          std::tuple("abc", "abc", 0), std::tuple("12 parts", "12 parts", 0),
          std::tuple(" 6 ", " 6 ", 6), std::tuple("1e3", "1e3", 1000),
          std::tuple("2147483647", "2147483647", 2147483647)}) {
        EXPECT_EQ(CountWithoutDecimals(text), whole) << text;
        EXPECT_EQ(CountOf(whole, {}).value_or(0), count) << text;
    }
    EXPECT_EQ(testing::ErrorOf([] { static_cast<void>(CountOf("2147483648", {})); }),
              ErrorNumber::Overflow);
}

}  // namespace
}  // namespace zarn
