#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "platform/Terminal.h"
#include "terminal/ProgressText.h"

namespace zarn {

/// What `zarn` shows: names and findings on standard output, messages, a summary and the progress
/// line on standard error. A message takes the place of the progress line.
class Console {
  public:
    enum class Manner { Usual, Quiet };

    /// `terminal` must outlive this object.
    Console(Terminal& terminal, Manner manner);

    /// A line on standard output. Characters that would steer a terminal are shown as `?` in one.
    void Line(std::string_view text);

    /// A line on standard error: what went wrong, and with which file.
    void Tell(std::string_view text);
    void Tell(std::string_view file, std::string_view reason);

    /// A line on standard error that a quiet run leaves out.
    void Summary(std::string_view text);

    /// Begins a stage of so many bytes, `Advance` says how many are done; at most ten times a
    /// second the line is drawn anew. `EndStage` removes it.
    void BeginStage(std::string_view stage, double total);
    void Advance(double done);
    void EndStage();

    /// True if a text was lost, since standard output cannot be written.
    [[nodiscard]] bool HasLostOutput() const { return hasLostOutput_; }

  private:
    using Moment = std::chrono::steady_clock::time_point;

    void Draw(std::string text);

    Terminal& terminal_;
    bool isQuiet_;
    bool showsProgress_;
    bool outputIsTerminal_;
    Glyphs glyphs_ = Glyphs::Ascii;
    Progress progress_;
    Moment begun_;
    Moment drawn_;
    std::size_t width_ = 0;  ///< columns that the progress line takes now
    bool hasLostOutput_ = false;
};

/// The text with a `?` for each control character.
[[nodiscard]] std::string Printable(std::string_view text);

}  // namespace zarn
