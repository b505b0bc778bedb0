#include "join/CommandLineText.h"

#include <array>

#include "runtime/CodePage.h"
#include "runtime/Numbers.h"
#include "runtime/Product.h"
#include "runtime/Text.h"
#include "scripts/BatchText.h"

namespace zarn {

namespace {

constexpr std::string_view EchoLine = "@Echo on";
constexpr std::string_view Remark = "Rem";
constexpr std::string_view EndLine = "Rem *===== End of Program =====*";
constexpr std::string_view ProgramName = "ZarnFileSplitter";

std::string RuleLine() {
    constexpr std::size_t Signs = 67;
    return std::string("Rem ").append(Signs, '=');
}

std::string ProductLine() {
    return "Rem |  " + ProductText() + "  " + std::string(WebAddress);
}

std::array<std::string, 6> LinesToCommand(const CommandLineSettings& settings) {
    return {std::string(EchoLine),       RuleLine(), ProductLine(), RuleLine(), std::string(Remark),
            CommandLineCommand(settings)};
}

std::string Valued(std::string_view key, std::string_view value) {
    return std::string(key).append(Trim(value)).append(" ");
}

// The parser of the command line knows no decimal point but ".", whatever the locale.
std::string PartSizePiece(const CommandLineSettings& settings) {
    const std::string number = NumberText(NumberPrefix(settings.partSize), LocaleSeparators{});
    return Valued("/PS=", number + (settings.inGigabytes ? "GB" : "MB"));
}

struct Keyword {
    std::string text;
    std::int32_t colour = 0;
};

std::array<Keyword, 16> KeywordTable() {
    return {{
        {std::string(ProgramName), SwitchBlue},
        {"/F=", SwitchBlue},
        {"/D=", SwitchBlue},
        {"/PS=", SwitchBlue},
        {"/PN=", SwitchBlue},
        {"/C", SwitchBlue},
        {"/CL=", SwitchBlue},
        {"/DP", SwitchBlue},
        {"/CRC", SwitchBlue},
        {"/DS", SwitchBlue},
        {"/SFV", SwitchBlue},
        {std::string(EchoLine), RemarkGreen},
        {RuleLine(), RemarkGreen},
        {ProductLine(), RemarkGreen},
        {std::string(EndLine), RemarkGreen},
        {std::string(Remark), RemarkGreen},
    }};
}

}  // namespace

std::string CommandLineCommand(const CommandLineSettings& settings) {
    std::string command(ProgramName);
    command.append(" ").append(Valued("/F=", settings.source));
    command.append(Valued("/D=", settings.destination));
    if (settings.bySize) {
        command.append(PartSizePiece(settings));
    }
    if (settings.byParts) {
        command.append(Valued("/PN=", settings.partsNumber));
    }
    if (settings.compress) {
        command.append("/C ").append(Valued("/CL=", std::to_string(settings.level)));
    }
    command.append(settings.sfv ? "/SFV " : "");
    command.append(settings.deleteSource ? "/DS " : "");
    command.append(settings.deleteParts ? "/DP " : "");
    return command;
}

std::string CommandLineView(const CommandLineSettings& settings) {
    std::string view;
    for (const std::string& line : LinesToCommand(settings)) {
        view.append(line).append("\r");
    }
    return view.append("\r").append(Remark).append("\r").append(EndLine);
}

std::string CommandLineBatchFile(const CommandLineSettings& settings) {
    std::string text;
    for (const std::string& line : LinesToCommand(settings)) {
        text.append(Line(line));
    }
    return EncodeText(text.append(Line(std::string(EndLine))));
}

std::string CommandLineBatchName(std::string_view name) {
    return std::string(name).append(Contains(UpperCase(name), ".BAT") ? "" : ".bat");
}

std::vector<PaintedText> PaintedKeywords(std::string_view text) {
    std::vector<PaintedText> painted;
    for (const auto& [keyword, colour] : KeywordTable()) {
        for (std::size_t found = text.find(keyword); found != std::string_view::npos;
             found = text.find(keyword, found + keyword.size())) {
            painted.push_back({found, keyword.size(), colour});
        }
    }
    return painted;
}

}  // namespace zarn
