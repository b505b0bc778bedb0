#include "terminal/MemoryRegistry.h"

#include "runtime/Text.h"

namespace zarn {

bool MemoryRegistry::KeyExists(RegistryHive /*hive*/, std::string_view key) {
    return keys_.contains(UpperCase(key));
}

RegistryStatus MemoryRegistry::CreateKey(RegistryHive /*hive*/, std::string_view key) {
    keys_[UpperCase(key)];
    return RegistryStatus::Success;
}

std::optional<RegistryValue> MemoryRegistry::QueryValue(RegistryHive /*hive*/, std::string_view key,
                                                        std::string_view name) {
    const auto values = keys_.find(UpperCase(key));
    if (values == keys_.end()) {
        return std::nullopt;
    }
    const auto value = values->second.find(UpperCase(name));
    return value == values->second.end() ? std::nullopt : std::optional(value->second);
}

RegistryStatus MemoryRegistry::SetValue(RegistryHive /*hive*/, std::string_view key,
                                        std::string_view name, const RegistryValue& value) {
    keys_[UpperCase(key)][UpperCase(name)] = value;
    return RegistryStatus::Success;
}

RegistryStatus MemoryRegistry::DeleteKey(RegistryHive /*hive*/, std::string_view key) {
    return keys_.erase(UpperCase(key)) > 0 ? RegistryStatus::Success : RegistryStatus::NotFound;
}

RegistryStatus MemoryRegistry::DeleteValue(RegistryHive /*hive*/, std::string_view key,
                                           std::string_view name) {
    const auto values = keys_.find(UpperCase(key));
    const bool erased = values != keys_.end() && values->second.erase(UpperCase(name)) > 0;
    return erased ? RegistryStatus::Success : RegistryStatus::NotFound;
}

}  // namespace zarn
