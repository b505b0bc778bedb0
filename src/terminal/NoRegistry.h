#pragma once

#include "platform/Registry.h"

namespace zarn {

/// A store without anything in it, which keeps nothing. A run of `zarn` is what its line says:
/// every setting has its default, whoever asks.
class NoRegistry : public Registry {
  public:
    [[nodiscard]] bool KeyExists(RegistryHive /*hive*/, std::string_view /*key*/) override {
        return false;
    }
    RegistryStatus CreateKey(RegistryHive /*hive*/, std::string_view /*key*/) override {
        return RegistryStatus::Failed;
    }
    [[nodiscard]] std::optional<RegistryValue> QueryValue(RegistryHive /*hive*/,
                                                          std::string_view /*key*/,
                                                          std::string_view /*name*/) override {
        return std::nullopt;
    }
    RegistryStatus SetValue(RegistryHive /*hive*/, std::string_view /*key*/,
                            std::string_view /*name*/, const RegistryValue& /*value*/) override {
        return RegistryStatus::Failed;
    }
    RegistryStatus DeleteKey(RegistryHive /*hive*/, std::string_view /*key*/) override {
        return RegistryStatus::NotFound;
    }
    RegistryStatus DeleteValue(RegistryHive /*hive*/, std::string_view /*key*/,
                               std::string_view /*name*/) override {
        return RegistryStatus::NotFound;
    }
    [[nodiscard]] std::string TakeNotice() override { return {}; }
};

}  // namespace zarn
