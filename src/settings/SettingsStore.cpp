#include "settings/SettingsStore.h"

#include "runtime/Numbers.h"
#include "runtime/Text.h"

namespace zarn {

RegistryValue ToStore(std::string_view text, const LocaleSeparators& separators) {
    if (IsNumericText(text, separators)) {
        return {RegistryType::Number, {}, ToInt32(NumberFromText(text, separators))};
    }
    return {RegistryType::Text, std::string(Trim(text)), 0};
}

StoredValue FromStore(const RegistryValue& value) {
    if (value.type == RegistryType::Number) {
        return value.number;
    }
    return value.type == RegistryType::Text ? value.text.substr(0, value.text.find('\0')) : "";
}

StoredValue SettingsStore::ReadRegistryValue(RegistryHive hive, std::string_view key,
                                             std::string_view name) {
    const std::optional<RegistryValue> value = registry_.QueryValue(hive, key, name);
    lastStatus_ = value ? RegistryStatus::Success : RegistryStatus::NotFound;
    return value ? FromStore(*value) : StoredValue();
}

void SettingsStore::SaveRegistryValue(RegistryHive hive, std::string_view key,
                                      std::string_view name, std::string_view value) {
    lastStatus_ = registry_.SetValue(hive, key, name, ToStore(value, separators_));
}

void SettingsStore::SaveRegistryValue(RegistryHive hive, std::string_view key,
                                      std::string_view name, double value) {
    lastStatus_ = registry_.SetValue(hive, key, name, {RegistryType::Number, {}, ToInt32(value)});
}

bool SettingsStore::RegistryKeyExists(RegistryHive hive, std::string_view key) {
    const bool exists = registry_.KeyExists(hive, key);
    lastStatus_ = exists ? RegistryStatus::Success : RegistryStatus::NotFound;
    return exists;
}

void SettingsStore::CreateRegistryKey(RegistryHive hive, std::string_view key) {
    lastStatus_ = registry_.CreateKey(hive, key);
}

bool SettingsStore::DeleteRegistryKey(RegistryHive hive, std::string_view parent,
                                      std::string_view subKey) {
    lastStatus_ = registry_.DeleteKey(hive, std::string(parent) + '\\' + std::string(subKey));
    return lastStatus_ == RegistryStatus::Success;
}

void SettingsStore::DeleteRegistryValue(RegistryHive hive, std::string_view key,
                                        std::string_view name) {
    lastStatus_ = registry_.DeleteValue(hive, key, name);
}

}  // namespace zarn
