#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zarn {

/// A split as the window has it set up.
struct CommandLineSettings {
    std::string source;
    std::string destination;
    std::string partSize;  ///< text of the size field: "1.44 MB - Diskette"
    bool bySize = false;
    bool inGigabytes = false;  ///< the unit of the size, else megabytes
    bool byParts = false;
    std::string partsNumber;  ///< text of the field
    bool compress = false;
    std::int32_t level = 0;  ///< of the compression
    bool sfv = false;
    bool deleteSource = false;
    bool deleteParts = false;
};

/// The command that repeats the split, one line that ends in a blank. Nothing is checked and no
/// path is quoted: the program's own parser knows no quotes.
[[nodiscard]] std::string CommandLineCommand(const CommandLineSettings& settings);

/// What the viewer shows: the command in a frame of remarks, nine lines with a carriage return
/// (code 13) between them.
[[nodiscard]] std::string CommandLineView(const CommandLineSettings& settings);

/// A batch file of the command, seven lines with CR LF behind each, as bytes of `EncodeText`.
[[nodiscard]] std::string CommandLineBatchFile(const CommandLineSettings& settings);

/// The name under which the batch file is written: with ".bat" behind it, unless the given one
/// holds that text anywhere in upper or lower case.
[[nodiscard]] std::string CommandLineBatchName(std::string_view name);

/// Colours of the viewer: blue * 65536 + green * 256 + red.
inline constexpr std::int32_t SwitchBlue = 0xFF0000;
inline constexpr std::int32_t RemarkGreen = 0x008000;

/// A piece of a text and the colour to paint it in.
struct PaintedText {
    std::size_t position = 0;  ///< of its first byte, from 0
    std::size_t length = 0;    ///< in bytes; the pieces are ASCII
    std::int32_t colour = 0;
};

/// The keywords in a text, in the order in which they are to be painted: pieces overlap, and later
/// ones paint over earlier ones.
[[nodiscard]] std::vector<PaintedText> PaintedKeywords(std::string_view text);

}  // namespace zarn
