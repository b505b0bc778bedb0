#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Signals.h"

namespace zarn {

/// The two streams of messages and names.
enum class Stream { Output, Error };

/// The terminal, or what stands in for it: where a program without a window writes, and where its
/// user is asked for what nobody else may see.
class Terminal {
  public:
    Terminal() = default;
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    virtual ~Terminal() = default;

    /// True if the stream is read by a person and not by a file or a program.
    [[nodiscard]] virtual bool IsTerminal(Stream stream) = 0;

    /// The columns of a terminal at this moment, which may change; 80 where it does not tell.
    [[nodiscard]] virtual int Columns(Stream stream) = 0;

    /// True if the user's locale is one of UTF-8.
    [[nodiscard]] virtual bool ShowsUnicode() = 0;

    /// Writes all of the text at once. False if it could not be written, and for all later texts of
    /// the stream then. A reader that has left is no failure: its texts are dropped.
    virtual bool Write(Stream stream, std::string_view text) = 0;

    /// Asks for a line on the process's own terminal, whatever the streams are, and does not show
    /// what is typed. Nothing without a terminal, at the end of input, and once a signal is held
    /// back; what the terminal shows is restored however it ends.
    [[nodiscard]] virtual std::optional<std::string> AskSecret(std::string_view prompt,
                                                               Signals& endingSignals) = 0;

    /// The first line of a file, which may be a pipe, by the system's path of it.
    struct SecretLine {
        std::string text;
        bool isExposed = false;  ///< a file that other users can read
    };
    /// Nothing if the file cannot be read.
    [[nodiscard]] virtual std::optional<SecretLine> ReadSecret(const std::string& systemPath) = 0;
};

}  // namespace zarn
