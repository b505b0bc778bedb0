#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zarn {

/// The one hive that holds settings.
enum class RegistryHive { CurrentUser };

enum class RegistryType {
    Text = 1,    ///< string
    Number = 4,  ///< 32-bit integer
    Other = 0,   ///< any other type: kept in the store, without a meaning for the program
};

/// A value of the store: `text` or `number` holds, as `type` says.
struct RegistryValue {
    RegistryType type = RegistryType::Text;
    std::string text;
    std::int32_t number = 0;
};

/// Status of a registry operation.
enum class RegistryStatus { Success, NotFound, Failed };

/// A store of keys and values. Keys are paths such as `Software\A\B`; key and value names are
/// compared without regard to letter case and keep the case that they were made with.
/// No operation raises: a failure is its status.
class Registry {
  public:
    Registry() = default;
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    virtual ~Registry() = default;

    [[nodiscard]] virtual bool KeyExists(RegistryHive hive, std::string_view key) = 0;

    /// Makes a key and the keys above it.
    virtual RegistryStatus CreateKey(RegistryHive hive, std::string_view key) = 0;

    /// The value; nothing if key or value is missing or the store cannot be read.
    [[nodiscard]] virtual std::optional<RegistryValue> QueryValue(RegistryHive hive,
                                                                  std::string_view key,
                                                                  std::string_view name) = 0;

    /// Writes a value (`Text` or `Number`), making its key if that is missing. The value is on
    /// the medium when the call succeeds. Where the store cannot be written it fails, and reads of
    /// this object give the value back all the same.
    virtual RegistryStatus SetValue(RegistryHive hive, std::string_view key, std::string_view name,
                                    const RegistryValue& value) = 0;

    /// Removes a key with its values; fails if it has sub-keys.
    virtual RegistryStatus DeleteKey(RegistryHive hive, std::string_view key) = 0;

    virtual RegistryStatus DeleteValue(RegistryHive hive, std::string_view key,
                                       std::string_view name) = 0;

    /// What the user must be told about the store since the last call: that it was damaged, and
    /// where it is kept. Lines are joined by carriage returns. Empty if there is nothing to tell.
    [[nodiscard]] virtual std::string TakeNotice() = 0;
};

}  // namespace zarn
