#include "window/PieceSizes.h"

#include <algorithm>
#include <array>
#include <utility>

#include "runtime/ByteUnits.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::size_t CustomPlaces = 3;

constexpr std::array<std::pair<std::string_view, std::int32_t>, 7> Presets = {{
    {DisketteSize, 1454236},
    {"100 MB - Zip Drive", 104857600},
    {"250 MB - Zip Drive", 262144000},
    {"700 MB - CD-R", 734003200},
    {"800 MB - CD-R", 838860800},
    {SmallDvdSize, 4},
    {LargeDvdSize, 8},
}};

constexpr std::array<std::string_view, 7> PresetTokens = {"100 MB", "1.44 MB", "250 MB", "700 MB",
                                                          "800 MB", "4.7 GB",  "8.5 GB"};

constexpr std::array<std::string_view, 4> MediumWords = {"CD-R", "DVD-R", "Zip", "Diskette"};

struct CustomSize {
    std::string name;
    double bytes = 0;
};

bool ContainsAny(std::string_view text, std::span<const std::string_view> words) {
    return std::ranges::any_of(words, [&](auto word) { return Contains(text, word); });
}

std::string PlainNumber(double value) {
    return NumberText(value, LocaleSeparators{});
}

double BytesOf(SizeUnit unit) {
    return unit == SizeUnit::Megabytes ? BytesInMegabyte : BytesInGigabyte;
}

std::string UnitName(SizeUnit unit) {
    return unit == SizeUnit::Megabytes ? "MB" : "GB";
}

CustomSize TypedSize(std::string_view text, SizeUnit unit) {
    if (!IsCustomSize(text)) {
        return {};
    }
    const std::string number = BareSize(text);
    std::string name = number + " " + UnitName(unit);
    if (ContainsAny(name, PresetTokens)) {
        return {};
    }
    return {std::move(name), NumberPrefix(number) * BytesOf(unit)};
}

CustomSize RowSize(const std::string& row, SizeUnit unit) {
    if (Contains(row, "MB")) {
        return {row, NumberPrefix(row) * BytesInMegabyte};
    }
    if (Contains(row, "GB")) {
        return {row, NumberPrefix(row) * BytesInGigabyte};
    }
    return {row + UnitName(unit), NumberPrefix(row) * BytesOf(unit)};
}

void BlankDuplicates(std::vector<CustomSize>& sizes) {
    for (auto first = sizes.begin(); first != sizes.end(); ++first) {
        const double bytes = first->bytes;
        if (bytes > 0) {
            std::ranges::replace_if(
                first + 1, sizes.end(), [&](const auto& size) { return size.bytes == bytes; },
                CustomSize{});
        }
    }
}

std::string StoredText(std::span<const CustomSize> sizes) {
    std::string text;
    for (const CustomSize& size : sizes) {
        if (!size.name.empty()) {
            text += size.name + "|" + PlainNumber(size.bytes) + ";";
        }
    }
    text = Replace(text, "  ", " ");
    if (!text.empty()) {
        text.pop_back();
    }
    return text;
}

}  // namespace

std::vector<PieceSizeRow> PieceSizeRows(std::string_view customSizes) {
    std::vector<PieceSizeRow> rows = {{std::string(TypeCustomSize), 0}};
    std::size_t places = 0;
    for (const std::string& entry : Split(customSizes, ";")) {
        if (places == CustomPlaces) {
            break;
        }
        if (!Contains(entry, "|")) {
            continue;
        }
        ++places;
        const std::vector<std::string> items = Split(entry, "|");
        const double bytes = NumberPrefix(items[1]);
        if (bytes > 0 && !ContainsAny(items[0], PresetTokens)) {
            rows.push_back({items[0], ToInt32(bytes)});
        }
    }
    for (const auto& [text, itemData] : Presets) {
        rows.push_back({std::string(text), itemData});
    }
    return rows;
}

std::string UpperUnitLetters(std::string_view text) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 6> Spellings = {
        {{"mb", "MB"}, {"Mb", "MB"}, {"mB", "MB"}, {"gb", "GB"}, {"Gb", "GB"}, {"gB", "GB"}}};
    std::string upper(text);
    for (const auto& [spelling, unit] : Spellings) {
        upper = Replace(upper, spelling, unit);
    }
    return upper;
}

bool IsCustomSize(std::string_view text) {
    constexpr double Least = 0.009;
    return NumberPrefix(text) > Least && !ContainsAny(text, MediumWords);
}

std::string BareSize(std::string_view text) {
    return PlainNumber(NumberPrefix(Replace(text, "MB", "")));
}

std::string SizeText(std::string_view text, SizeUnit unit) {
    return PlainNumber(NumberPrefix(text)) + " " + UnitName(unit);
}

std::string MergedCustomSizes(std::string_view text, std::span<const std::string> rows,
                              SizeUnit unit) {
    std::vector<CustomSize> sizes = {TypedSize(text, unit), CustomSize{}};
    for (const std::string& row : rows) {
        if (Contains(row, TypeCustomSize) || ContainsAny(row, MediumWords)) {
            continue;
        }
        sizes.back() = RowSize(row, unit);
        if (sizes.back().bytes > 0) {
            sizes.emplace_back();
        }
    }
    BlankDuplicates(sizes);
    return StoredText(std::span(sizes).first(std::min(sizes.size(), CustomPlaces)));
}

std::string CountWithoutDecimals(std::string_view text) {
    return NumberPrefix(text) == 0 ? std::string(text) : Replace(Replace(text, ".", ""), ",", "");
}

std::optional<std::int32_t> CountOf(std::string_view text, const LocaleSeparators& separators) {
    if (NumberPrefix(text) == 0 || !IsNumericText(text, separators)) {
        return {};
    }
    return ToInt32(NumberFromText(text, separators));
}

}  // namespace zarn
