#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/Registry.h"
#include "runtime/Locale.h"

namespace zarn {

/// A value on its way from or to the store: a text, empty for an absent value, or a 32-bit
/// integer.
using StoredValue = std::variant<std::string, std::int32_t>;

/// The store operations behind `Parameters`. A failure of the platform is not reported; it stays
/// readable as the last status.
class SettingsStore {
  public:
    /// Both arguments must outlive this object.
    SettingsStore(Registry& registry, const LocaleSeparators& separators)
        : registry_(registry), separators_(separators) {}

    /// The value; empty text if it is absent, of another type, or unreadable. A stored text ends
    /// at its first NUL.
    [[nodiscard]] StoredValue ReadRegistryValue(RegistryHive hive, std::string_view key,
                                                std::string_view name);

    /// A value that reads as a number in the locale is stored as a 32-bit integer, rounded half
    /// to even; any other is stored as text without the blanks at its ends.
    /// Raises overflow for a number beyond 32 bits.
    void SaveRegistryValue(RegistryHive hive, std::string_view key, std::string_view name,
                           std::string_view value);
    void SaveRegistryValue(RegistryHive hive, std::string_view key, std::string_view name,
                           double value);

    [[nodiscard]] bool RegistryKeyExists(RegistryHive hive, std::string_view key);
    void CreateRegistryKey(RegistryHive hive, std::string_view key);

    /// True on success.
    bool DeleteRegistryKey(RegistryHive hive, std::string_view parent, std::string_view subKey);
    void DeleteRegistryValue(RegistryHive hive, std::string_view key, std::string_view name);

    [[nodiscard]] RegistryStatus LastStatus() const { return lastStatus_; }

  private:
    Registry& registry_;
    const LocaleSeparators& separators_;
    RegistryStatus lastStatus_ = RegistryStatus::Success;
};

}  // namespace zarn
