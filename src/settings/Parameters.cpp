#include "settings/Parameters.h"

#include <utility>

#include "runtime/Numbers.h"
#include "runtime/Product.h"
#include "settings/CryptPass.h"

namespace zarn {

PriorityClass PriorityClassOf(double value) {
    if (value <= 1) {
        return PriorityClass::Idle;
    }
    if (value <= 2) {
        return PriorityClass::Normal;
    }
    return value <= 3 ? PriorityClass::High : PriorityClass::RealTime;
}

bool KeepsPassword(std::string_view password, const LocaleSeparators& separators) {
    const std::string scrambled = CryptPass(password, true);
    if (IsNumericText(scrambled, separators)) {
        return false;
    }
    const StoredValue back = FromStore(ToStore(scrambled, separators));
    return CryptPass(std::get<std::string>(back), false) == password;
}

Parameters::Parameters(Registry& registry, Processes& processes, FileSystem& fileSystem,
                       Files& files, const LocaleSeparators& separators)
    : store_(registry, separators),
      processes_(processes),
      fileSystem_(fileSystem),
      files_(files),
      separators_(separators) {
    CurrentVersion(VersionText);
}

std::string Parameters::StoredText(const TextSetting& setting) {
    const StoredValue value =
        store_.ReadRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name);
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return std::to_string(*number);
    }
    return std::get<std::string>(value);
}

std::string Parameters::Text(const TextSetting& setting) {
    std::string text = StoredText(setting);
    return text.empty() ? SaveText(setting, setting.absent) : text;
}

double Parameters::Number(const NumberSetting& setting) {
    const StoredValue value =
        store_.ReadRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name);
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return *number;
    }
    const auto& text = std::get<std::string>(value);
    if (text.empty()) {
        SaveNumber(setting, setting.absent);
        return setting.absent;
    }
    return NumberFromText(text, separators_);
}

std::string Parameters::SaveText(const TextSetting& setting, std::string_view value) {
    store_.SaveRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name, value);
    return std::string(value);
}

void Parameters::SaveNumber(const NumberSetting& setting, double value) {
    store_.SaveRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name, value);
}

std::string Parameters::TemporaryFolder() {
    std::string text = StoredText(Settings::TemporaryFolder);
    return text.empty() ? SaveText(Settings::TemporaryFolder, files_.GetWindowsTempPath()) : text;
}

std::string Parameters::SavedBatchFile() {
    std::string text = StoredText(Settings::SavedBatchFile);
    return text.empty() ? SaveText(Settings::SavedBatchFile, fileSystem_.ProgramFolder()) : text;
}

void Parameters::DeleteSplitParts(StoredValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        if (!IsNumericText(*text, separators_)) {
            value = 0;
        } else if (NumberFromText(*text, separators_) > 1) {
            value = 1;
        }
    } else if (std::get<std::int32_t>(value) > 1) {
        value = 1;
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        SaveNumber(Settings::DeleteSplitParts, NumberFromText(*text, separators_));
    } else {
        SaveNumber(Settings::DeleteSplitParts, std::get<std::int32_t>(value));
    }
}

double Parameters::PriorityProcessor() {
    const double value = Number(Settings::PriorityProcessor);
    processes_.SetPriorityClass(PriorityClassOf(value));
    return value;
}

void Parameters::PriorityProcessor(double value) {
    SaveNumber(Settings::PriorityProcessor, value);
    processes_.SetPriorityClass(PriorityClassOf(value));
}

std::string Parameters::CompressPassword() {
    std::string text = StoredText(Settings::CompressPassword);
    return CryptPass(
        text.empty() ? SaveText(Settings::CompressPassword, CryptPass("", true)) : text, false);
}

void Parameters::CompressPassword(std::string_view value) {
    SaveText(Settings::CompressPassword, CryptPass(value, true));
}

std::optional<std::string> Parameters::ZipPassword() {
    if (CompressPasswordProtect() != 1) {
        return std::string();
    }
    constexpr TextSetting Setting = Settings::CompressPassword;
    const StoredValue stored =
        store_.ReadRegistryValue(RegistryHive::CurrentUser, Setting.key, Setting.name);
    const auto* text = std::get_if<std::string>(&stored);
    if (text == nullptr || text->empty()) {
        return std::nullopt;
    }
    std::string password = CryptPass(*text, false);
    const bool isTyped = CryptPass(password, true) == *text && KeepsPassword(password, separators_);
    return isTyped ? std::optional(std::move(password)) : std::nullopt;
}

}  // namespace zarn
