#include <algorithm>

#include "runtime/CodePage.h"
#include "runtime/Product.h"
#include "runtime/Text.h"
#include "scripts/BatchGenerator.h"
#include "scripts/BatchText.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

bool IsThere(const SfvEntry& entry) {
    return !Trim(entry.Name).empty();
}

std::string DashedLine() {
    constexpr std::size_t DashCount = 48;
    return Line(";" + std::string(DashCount, '-'));
}

/// A size in its column: right-aligned, and cut behind where it is too long.
std::string SizeColumn(std::string_view size) {
    constexpr std::size_t Width = 15;
    return PadLeft(Left(size, Width), Width, ' ');
}

/// Pads the checksums of the parts that are there to the longest of them.
void AlignChecksums(std::span<SfvEntry> entries) {
    std::size_t width = 0;
    for (const SfvEntry& entry : entries) {
        width = std::max(width, IsThere(entry) ? Length(entry.CRC) : 0);
    }
    for (SfvEntry& entry : entries) {
        if (IsThere(entry)) {
            BatchGenerator::PadLeftZero(entry.CRC, static_cast<std::int32_t>(width));
        }
    }
}

std::string DetailLines(std::span<const SfvEntry> entries) {
    std::string lines;
    for (const SfvEntry& entry : entries) {
        if (IsThere(entry)) {
            lines += Line(";" + SizeColumn(entry.Size) + "  " + entry.Date + "  " + entry.Name);
        }
    }
    return lines;
}

std::string ChecksumLines(std::span<const SfvEntry> entries) {
    std::string lines;
    for (const SfvEntry& entry : entries) {
        if (IsThere(entry)) {
            lines += Line(entry.Name + "  " + entry.CRC);
        }
    }
    return lines;
}

}  // namespace

std::string BatchGenerator::FunctionFileSFV(std::string_view firstPart,
                                            std::string_view destinationBase) {
    return PathBesideParts(firstPart, destinationBase, ChecksumEnding);
}

std::string BatchGenerator::PadLeftZero(std::string& text, std::int32_t width) {
    text = PadLeft(text, static_cast<std::size_t>(std::max(width, 0)), '0');
    return text;
}

void BatchGenerator::FilesMakeSFV(std::span<SfvEntry> entries, std::string_view destinationBase) {
    const std::string firstPart = entries.empty() ? std::string() : entries.front().Name;
    const std::string path = FunctionFileSFV(firstPart, destinationBase);
    AlignChecksums(entries);
    const std::string text = SfvHeadLines(std::ranges::count_if(entries, IsThere)) + Line(";") +
                             DetailLines(entries) + Line(";") + DashedLine() + Line(";") +
                             ChecksumLines(entries) + Line(";") +
                             Line(";----------------- End SFV File -----------------");
    shared_.Platform().fileSystem->PrepareFile(path, EncodeText(text))->Commit();
}

std::string BatchGenerator::SfvHeadLines(std::int64_t partsCount) {
    const DateTime now = shared_.Platform().clock->Now();
    const std::string created =
        DateText(now, "-") + " " + ClockText(now, shared_.Separators().time, ClockDetail::Seconds);
    std::string address(10, ' ');
    address.append(WebAddress).append("/");
    return DashedLine() + Line(std::string(ChecksumMark) + ProductText()) + Line("; ") +
           Line(";" + address) + DashedLine() + Line(";  File Created : " + created) +
           Line(";  Original File : " + originalFile_) +
           Line(";  Parts Count : " + std::to_string(partsCount)) +
           Line(";  Files Detail :" + std::string(32, ' '));
}

}  // namespace zarn
