#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Locale.h"

namespace zarn {

/// What a typed piece size counts in.
enum class SizeUnit { Megabytes, Gigabytes };

/// Rows of the list of piece sizes whose bytes follow from their text alone.
inline constexpr std::string_view TypeCustomSize = "Type Custom Size ...";
inline constexpr std::string_view DisketteSize = "1.44 MB - Diskette";
inline constexpr std::string_view SmallDvdSize = "4.7 GB - DVD-R";
inline constexpr std::string_view LargeDvdSize = "8.5 GB - DVD-R";

/// One row of the list. `itemData` is its size in bytes, except for the first row (0) and the two
/// DVD rows, whose sizes do not fit.
struct PieceSizeRow {
    std::string text;
    std::int32_t itemData = 0;
};

/// The whole list: the row that invites to type, up to three of the user's own sizes, the presets.
/// `customSizes` is the stored text: entries of display text, "|" and bytes, joined by ";". An
/// entry of a preset's size, or without bytes, gives no row but counts as one of the three. Raises
/// overflow for an entry of 2 GB or more.
[[nodiscard]] std::vector<PieceSizeRow> PieceSizeRows(std::string_view customSizes);

/// The text with the letters of both units in upper case: "250 mb" becomes "250 MB".
[[nodiscard]] std::string UpperUnitLetters(std::string_view text);

/// True for a size that is worth remembering: one that reads above 0.009 and is no preset row.
[[nodiscard]] bool IsCustomSize(std::string_view text);

/// The number that a text reads without "MB". The decimal point of these texts is "." in every
/// locale, as that is what a field is read by.
[[nodiscard]] std::string BareSize(std::string_view text);

/// The number that a text begins with, in a unit: "4.7 GB - DVD-R" becomes "4.7 GB".
[[nodiscard]] std::string SizeText(std::string_view text, SizeUnit unit);

/// What is stored after a job: the size in the field, if it is a custom one, and the list's own
/// custom rows, of which those on the first three places are kept. `text` is the field's text and
/// `rows` are the list's texts; a text without a unit counts in `unit`. A place that turns out to
/// hold no size of its own stays empty.
[[nodiscard]] std::string MergedCustomSizes(std::string_view text,
                                            std::span<const std::string> rows, SizeUnit unit);

/// A count of parts without the marks of decimals: "2.5" and "2,5" become "25". A text that reads 0
/// stays as it is.
[[nodiscard]] std::string CountWithoutDecimals(std::string_view text);

/// The count that a text stands for as a whole; nothing where it reads 0 or is no number. Raises
/// overflow beyond 32 bits.
[[nodiscard]] std::optional<std::int32_t> CountOf(std::string_view text,
                                                  const LocaleSeparators& separators);

}  // namespace zarn
