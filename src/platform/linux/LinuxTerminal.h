#pragma once

#include <array>

#include "platform/Terminal.h"

namespace zarn {

/// The process's own terminal and streams. A process that has such an object does not die of a pipe
/// that nobody reads.
class LinuxTerminal : public Terminal {
  public:
    LinuxTerminal();

    [[nodiscard]] bool IsTerminal(Stream stream) override;
    [[nodiscard]] int Columns(Stream stream) override;
    [[nodiscard]] bool ShowsUnicode() override;
    bool Write(Stream stream, std::string_view text) override;
    [[nodiscard]] std::optional<std::string> AskSecret(std::string_view prompt,
                                                       Signals& endingSignals) override;
    [[nodiscard]] std::optional<SecretLine> ReadSecret(const std::string& systemPath) override;

  private:
    enum class State { Open, Closed, Failed };

    std::array<State, 2> states_ = {State::Open, State::Open};
};

}  // namespace zarn
