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

/// What a text becomes in the store: a text that reads as a number in the locale is a 32-bit
/// integer, rounded half to even; any other loses the blanks at its ends.
/// Raises overflow for a number beyond 32 bits.
[[nodiscard]] RegistryValue ToStore(std::string_view text, const LocaleSeparators& separators);

/// What a value of the store is read as: a text up to its first NUL, an integer, or empty text for
/// another type.
[[nodiscard]] StoredValue FromStore(const RegistryValue& value);

/// The store operations behind `Parameters`. A failure of the platform is not reported; it stays
/// readable as the last status.
class SettingsStore {
  public:
    /// Both arguments must outlive this object.
    SettingsStore(Registry& registry, const LocaleSeparators& separators)
        : registry_(registry), separators_(separators) {}

    /// The value as `FromStore` gives it; empty text if it is absent or unreadable.
    [[nodiscard]] StoredValue ReadRegistryValue(RegistryHive hive, std::string_view key,
                                                std::string_view name);

    /// Stores a value as `ToStore` gives it, or a number. Raises overflow for one beyond 32 bits.
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
