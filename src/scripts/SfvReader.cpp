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
    return !digits.empty() && stop == end && error == std::errc() ? std::optional(value)
                                                                  : std::nullopt;
}

// A name may end in a word that reads as a number, so one blank is not enough where the digits are
// not as many as they usually are.
bool PartsChecksum(std::string_view gap, std::string_view digits) {
    return digits.size() == UsualDigits || gap.size() > 1 || gap == "\t";
}

// Takes the checksum off the end of a line.
std::optional<std::uint32_t> CutChecksum(std::string_view& line) {
    const std::string_view whole = TrimEnd(line);
    const std::size_t blank = whole.find_last_of(Gaps);
    if (blank == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view digits = whole.substr(blank + 1);
    const std::string_view name = TrimEnd(whole.substr(0, blank));
    const std::string_view gap = whole.substr(name.size(), blank + 1 - name.size());
    if (name.empty() || !PartsChecksum(gap, digits)) {
        return std::nullopt;
    }
    const std::optional<std::uint32_t> checksum = ChecksumOf(digits);
    line = checksum ? name : line;
    return checksum;
}

// Takes a text in the place of the checksum off the end of a line, and says what is wrong.
std::string CutText(std::string_view& line) {
    const std::size_t two = line.rfind("  ");
    const std::size_t tab = line.rfind('\t');
    const std::size_t gap =
        two == std::string_view::npos || (tab != std::string_view::npos && tab > two) ? tab : two;
    const std::string_view text = Trim(gap == std::string_view::npos ? "" : line.substr(gap), Gaps);
    const std::string_view name = TrimEnd(line.substr(0, gap));
    line = name.empty() ? TrimEnd(line) : name;
    return name.empty() || text.empty() ? "there is no checksum" : Quoted(text) + " is no checksum";
}

SfvLine ReadLine(std::string_view line, bool isUtf8) {
    SfvLine result;
    result.checksum = CutChecksum(line);
    if (!result.checksum) {
        result.problem = CutText(line);
    }
    result.rawName = line;
    result.name = isUtf8 ? result.rawName : DecodeSingleBytes(line);
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
        result.push_back(ReadLine(*line, isUtf8));
        result.back().line = lines.Number();
    }
    return result;
}

}  // namespace zarn
