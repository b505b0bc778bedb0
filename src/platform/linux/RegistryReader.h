#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/RegistryText.h"

namespace zarn {

/// Reads the text of a settings file line by line, as people and registry editors leave it
/// (`RegistryText.h` tells what is taken).
class RegistryReader {
  public:
    /// The text must outlive this object. A text in UTF-16 has become UTF-8 before.
    explicit RegistryReader(std::string_view text) : rest_(text) {}

    /// The keys; nothing if a line does not parse, which is the last one counted then.
    [[nodiscard]] std::optional<RegistryKeys> Read();
    [[nodiscard]] std::size_t LinesRead() const { return lines_; }

  private:
    [[nodiscard]] std::string NextLine();
    [[nodiscard]] bool TakeLine(std::string_view line);
    [[nodiscard]] bool TakeKey(std::string_view line);
    [[nodiscard]] bool TakeEntry(std::string_view line);
    [[nodiscard]] bool TakeValue(std::string_view rest, RegistryEntry& entry);
    [[nodiscard]] bool TakeHexValue(std::string_view rest, RegistryEntry& entry);

    std::string_view rest_;
    std::size_t lines_ = 0;
    RegistryKeys keys_;
    RegistryKey* key_ = nullptr;  ///< that the values belong to; none ahead of the first key
};

}  // namespace zarn
