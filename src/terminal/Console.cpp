#include "terminal/Console.h"

#include <algorithm>

#include "runtime/Text.h"

namespace zarn {

Console::Console(Terminal& terminal, Manner manner)
    : terminal_(terminal),
      isQuiet_(manner == Manner::Quiet),
      showsProgress_(!isQuiet_ && terminal.IsTerminal(Stream::Error)),
      outputIsTerminal_(terminal.IsTerminal(Stream::Output)) {
    if (showsProgress_ && terminal.ShowsUnicode()) {
        glyphs_ = Glyphs::Unicode;
    }
}

void Console::Line(std::string_view text) {
    Draw({});
    const std::string line = (outputIsTerminal_ ? Printable(text) : std::string(text)) + "\n";
    hasLostOutput_ = !terminal_.Write(Stream::Output, line) || hasLostOutput_;
}

void Console::Tell(std::string_view text) {
    Draw({});
    terminal_.Write(Stream::Error, "zarn: " + Printable(text) + "\n");
}

void Console::Tell(std::string_view file, std::string_view reason) {
    Tell(std::string(file).append(": ").append(reason));
}

void Console::Summary(std::string_view text) {
    if (!isQuiet_) {
        Draw({});
        terminal_.Write(Stream::Error, Printable(text) + "\n");
    }
}

void Console::BeginStage(std::string_view stage, double total) {
    begun_ = std::chrono::steady_clock::now();
    drawn_ = {};
    progress_ = {std::string(stage), 0, total, 0};
    Advance(0);
}

void Console::Advance(double done) {
    constexpr std::chrono::milliseconds BetweenDrawings(100);
    if (!showsProgress_) {
        return;
    }
    const Moment now = std::chrono::steady_clock::now();
    if (now - drawn_ < BetweenDrawings) {
        return;
    }
    drawn_ = now;
    progress_.done = done;
    progress_.seconds = std::chrono::duration<double>(now - begun_).count();
    Draw(ProgressText(progress_, terminal_.Columns(Stream::Error), glyphs_));
}

void Console::EndStage() {
    Draw({});
}

// Blanks take away what is left of the line before; no other way works in every terminal. Where the
// terminal has become narrower they must not wrap.
void Console::Draw(std::string text) {
    if (width_ == 0 && text.empty()) {
        return;
    }
    const std::size_t width = Length(text);
    const auto columns = static_cast<std::size_t>(terminal_.Columns(Stream::Error));
    const std::size_t covered = std::min(width_, columns - 1);
    text.append(covered > width ? covered - width : 0, ' ');
    terminal_.Write(Stream::Error, "\r" + text + (width == 0 ? "\r" : ""));
    width_ = width;
}

std::string Printable(std::string_view text) {
    std::string shown(text);
    for (char& character : shown) {
        const auto code = static_cast<unsigned char>(character);
        constexpr unsigned char FirstPrintable = 0x20;
        constexpr unsigned char Delete = 0x7F;
        if (code < FirstPrintable || code == Delete) {
            character = '?';
        }
    }
    return shown;
}

}  // namespace zarn
