#include "scripts/SfvReader.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "runtime/CodePage.h"
#include "runtime/Text.h"
#include "scripts/TextLines.h"

namespace zarn {

namespace {

constexpr std::string_view Gaps = " \t";
constexpr std::size_t UsualDigits = 8;

std::string_view TrimEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of(Gaps) + 1);
}

// Leading zeros do not count: this program pads a column to its widest text.
std::optional<std::uint32_t> ChecksumOf(std::string_view digits) {
    constexpr int Hexadecimal = 16;
    std::uint32_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, Hexadecimal);
    return stop == end && error == std::errc() ? std::optional(value) : std::nullopt;
}

// A name may end in a word that reads as a number, so one blank is not enough where the digits are
// not as many as they usually are.
bool PartsChecksum(std::string_view gap, std::string_view digits) {
    return digits.size() == UsualDigits || gap.size() > 1 || gap == "\t";
}

// Takes the checksum off the end of a line.
std::optional<std::uint32_t> CutChecksum(std::string_view& line) {
    const std::string_view digits = line.substr(line.find_last_of(Gaps) + 1);
    const std::string_view name = TrimEnd(line.substr(0, line.size() - digits.size()));
    const std::string_view gap =
        line.substr(name.size(), line.size() - name.size() - digits.size());
    const std::optional<std::uint32_t> checksum = ChecksumOf(digits);
    if (name.empty() || !checksum || !PartsChecksum(gap, digits)) {
        return std::nullopt;
    }
    line = name;
    return checksum;
}

// Takes a text in the place of the checksum off the end of a line, and says what is wrong.
std::string CutText(std::string_view& line) {
    const std::size_t behind = std::max(line.rfind("  ") + 1, line.rfind('\t') + 1);
    const std::string_view name = TrimEnd(line.substr(0, behind));
    if (name.empty()) {
        return "there is no checksum";
    }
    const std::string_view text = Trim(line.substr(behind), Gaps);
    line = name;
    return Quoted(text) + " is no checksum";
}

// `line` has no blanks at its end.
SfvLine ReadLine(std::string_view line, bool isUtf8) {
    const auto decoded = [isUtf8](std::string_view bytes) {
        return isUtf8 ? std::string(bytes) : DecodeSingleBytes(bytes);
    };
    SfvLine result;
    result.checksum = CutChecksum(line);
    if (!result.checksum) {
        result.problem = decoded(CutText(line));
    }
    result.rawName = line;
    result.name = decoded(line);
    return result;
}

}  // namespace

std::optional<std::vector<SfvLine>> ReadSfv(std::string_view bytes) {
    if (bytes.size() > LargestSfv) {
        return std::nullopt;
    }
    const std::string_view text = WithoutByteOrderMark(bytes);
    const bool isUtf8 = IsUtf8(text);
    std::vector<SfvLine> result;
    TextLines lines(text);
    while (const auto line = lines.Next()) {
        const std::string_view said = Trim(*line, Gaps);
        if (said.empty() || said.starts_with(';')) {
            continue;
        }
        if (result.size() == MostSfvLines) {
            return std::nullopt;
        }
        result.push_back(ReadLine(TrimEnd(*line), isUtf8));
        result.back().line = lines.Number();
    }
    return result;
}

}  // namespace zarn
