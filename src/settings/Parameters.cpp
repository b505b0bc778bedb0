#include "settings/Parameters.h"

#include "runtime/Numbers.h"
#include "runtime/Product.h"
#include "settings/CryptPass.h"

namespace zarn {

namespace {

constexpr std::string_view General = R"(Software\Zarn Technology\Zarn File Splitter\General)";
constexpr std::string_view LastUsed = R"(Software\Zarn Technology\Zarn File Splitter\Last Used)";
constexpr std::string_view Preferences =
    R"(Software\Zarn Technology\Zarn File Splitter\Preferences)";

}  // namespace

struct Parameters::Settings {
    static constexpr Setting TemporaryFolder = {General, "Temporary Folder"};
    static constexpr Setting CurrentVersion = {General, "Current Version"};
    static constexpr Setting SavedBatchFile = {LastUsed, "Saved Batch File"};
    static constexpr Setting DestinationFolder = {LastUsed, "Destination Folder"};
    static constexpr Setting ViewSideBar = {LastUsed, "View Side Bar"};
    static constexpr Setting DestinationFolderMerge = {LastUsed, "Destination Folder Merge"};
    static constexpr Setting DestinationFolderUseSource = {LastUsed,
                                                           "Destination Folder Use Source"};
    static constexpr Setting DestinationFolderUseMerge = {LastUsed, "Destination Folder Use Merge"};
    static constexpr Setting DeleteSource = {LastUsed, "Delete Source"};
    static constexpr Setting DeleteSplitParts = {LastUsed, "Delete Split Parts"};
    static constexpr Setting CRC32 = {LastUsed, "CRC 32"};
    static constexpr Setting SFV = {LastUsed, "SFV File"};
    static constexpr Setting LastOpenFileFolder = {LastUsed, "Last Open File Folder"};
    static constexpr Setting LastOpenFolderMergeFile = {LastUsed, "Last Open Folder Merge File"};
    static constexpr Setting SplitCriteria = {LastUsed, "Split Criteria"};
    static constexpr Setting SizeGB = {LastUsed, "Compute GB"};
    static constexpr Setting SizeMB = {LastUsed, "Compute MB"};
    static constexpr Setting ComboSize = {LastUsed, "Custom Sizes"};
    static constexpr Setting CompressDestination = {LastUsed, "Compress Destination"};
    static constexpr Setting AutoJoin = {LastUsed, "Auto Join"};
    static constexpr Setting PriorityProcessor = {Preferences, "Priority Processor"};
    static constexpr Setting CompressEncryptionLevel = {Preferences, "Compress Encryption Level"};
    static constexpr Setting CompressEncryptionLenght = {Preferences, "Compress Encryption Lenght"};
    static constexpr Setting CompressPasswordProtect = {Preferences, "Compress Password Protect"};
    static constexpr Setting CompressPassword = {Preferences, "Compress Password"};
    static constexpr Setting CompressLevel = {Preferences, "Compress Level"};
};

PriorityClass PriorityClassOf(double value) {
    if (value <= 1) {
        return PriorityClass::Idle;
    }
    if (value <= 2) {
        return PriorityClass::Normal;
    }
    return value <= 3 ? PriorityClass::High : PriorityClass::RealTime;
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

std::string Parameters::StoredText(const Setting& setting) {
    const StoredValue value =
        store_.ReadRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name);
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return std::to_string(*number);
    }
    return std::get<std::string>(value);
}

std::string Parameters::ReadText(const Setting& setting, std::string_view absent) {
    std::string text = StoredText(setting);
    return text.empty() ? SaveText(setting, absent) : text;
}

double Parameters::ReadNumber(const Setting& setting, double absent) {
    const StoredValue value =
        store_.ReadRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name);
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return *number;
    }
    const auto& text = std::get<std::string>(value);
    if (text.empty()) {
        SaveNumber(setting, absent);
        return absent;
    }
    return NumberFromText(text, separators_);
}

std::string Parameters::SaveText(const Setting& setting, std::string_view value) {
    store_.SaveRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name, value);
    return std::string(value);
}

void Parameters::SaveNumber(const Setting& setting, double value) {
    store_.SaveRegistryValue(RegistryHive::CurrentUser, setting.key, setting.name, value);
}

std::string Parameters::TemporaryFolder() {
    std::string text = StoredText(Settings::TemporaryFolder);
    return text.empty() ? SaveText(Settings::TemporaryFolder, files_.GetWindowsTempPath()) : text;
}

void Parameters::TemporaryFolder(std::string_view value) {
    SaveText(Settings::TemporaryFolder, value);
}

std::string Parameters::CurrentVersion() {
    return ReadText(Settings::CurrentVersion, VersionText);
}

void Parameters::CurrentVersion(std::string_view value) {
    SaveText(Settings::CurrentVersion, value);
}

std::string Parameters::SavedBatchFile() {
    std::string text = StoredText(Settings::SavedBatchFile);
    return text.empty() ? SaveText(Settings::SavedBatchFile, fileSystem_.ProgramFolder()) : text;
}

void Parameters::SavedBatchFile(std::string_view value) {
    SaveText(Settings::SavedBatchFile, value);
}

std::string Parameters::DestinationFolder() {
    return ReadText(Settings::DestinationFolder, "");
}

void Parameters::DestinationFolder(std::string_view value) {
    SaveText(Settings::DestinationFolder, value);
}

std::int32_t Parameters::ViewSideBar() {
    return ToInt32(ReadNumber(Settings::ViewSideBar, 1));
}

void Parameters::ViewSideBar(std::int32_t value) {
    SaveNumber(Settings::ViewSideBar, value);
}

std::string Parameters::DestinationFolderMerge() {
    return ReadText(Settings::DestinationFolderMerge, "");
}

void Parameters::DestinationFolderMerge(std::string_view value) {
    SaveText(Settings::DestinationFolderMerge, value);
}

std::int16_t Parameters::DestinationFolderUseSource() {
    return ToInt16(ReadNumber(Settings::DestinationFolderUseSource, 1));
}

void Parameters::DestinationFolderUseSource(std::int16_t value) {
    SaveNumber(Settings::DestinationFolderUseSource, value);
}

std::int16_t Parameters::DestinationFolderUseMerge() {
    return ToInt16(ReadNumber(Settings::DestinationFolderUseMerge, 1));
}

void Parameters::DestinationFolderUseMerge(std::int16_t value) {
    SaveNumber(Settings::DestinationFolderUseMerge, value);
}

std::int16_t Parameters::DeleteSource() {
    return ToInt16(ReadNumber(Settings::DeleteSource, 0));
}

void Parameters::DeleteSource(std::int16_t value) {
    SaveNumber(Settings::DeleteSource, value);
}

std::int16_t Parameters::DeleteSplitParts() {
    return ToInt16(ReadNumber(Settings::DeleteSplitParts, 0));
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
        SaveText(Settings::DeleteSplitParts, *text);
    } else {
        SaveNumber(Settings::DeleteSplitParts, std::get<std::int32_t>(value));
    }
}

std::int16_t Parameters::CRC32() {
    return ToInt16(ReadNumber(Settings::CRC32, 0));
}

void Parameters::CRC32(std::int16_t value) {
    SaveNumber(Settings::CRC32, value);
}

std::int16_t Parameters::SFV() {
    return ToInt16(ReadNumber(Settings::SFV, 0));
}

void Parameters::SFV(std::int16_t value) {
    SaveNumber(Settings::SFV, value);
}

std::string Parameters::LastOpenFileFolder() {
    return ReadText(Settings::LastOpenFileFolder, R"(C:\)");
}

void Parameters::LastOpenFileFolder(std::string_view value) {
    SaveText(Settings::LastOpenFileFolder, value);
}

std::string Parameters::LastOpenFolderMergeFile() {
    return ReadText(Settings::LastOpenFolderMergeFile, R"(C:\)");
}

void Parameters::LastOpenFolderMergeFile(std::string_view value) {
    SaveText(Settings::LastOpenFolderMergeFile, value);
}

std::string Parameters::SplitCriteria() {
    return ReadText(Settings::SplitCriteria, SizeCriterion);
}

void Parameters::SplitCriteria(std::string_view value) {
    SaveText(Settings::SplitCriteria, value);
}

std::int16_t Parameters::SizeGB() {
    return ToInt16(ReadNumber(Settings::SizeGB, 0));
}

void Parameters::SizeGB(std::int16_t value) {
    SaveNumber(Settings::SizeGB, value);
}

std::int16_t Parameters::SizeMB() {
    return ToInt16(ReadNumber(Settings::SizeMB, 1));
}

void Parameters::SizeMB(std::int16_t value) {
    SaveNumber(Settings::SizeMB, value);
}

std::string Parameters::ComboSize() {
    return ReadText(Settings::ComboSize, "");
}

void Parameters::ComboSize(std::string_view value) {
    SaveText(Settings::ComboSize, value);
}

std::int16_t Parameters::CompressDestination() {
    return ToInt16(ReadNumber(Settings::CompressDestination, 0));
}

void Parameters::CompressDestination(std::int16_t value) {
    SaveNumber(Settings::CompressDestination, value);
}

std::int16_t Parameters::AutoJoin() {
    return ToInt16(ReadNumber(Settings::AutoJoin, 1));
}

void Parameters::AutoJoin(std::int16_t value) {
    SaveNumber(Settings::AutoJoin, value);
}

double Parameters::PriorityProcessor() {
    constexpr double NormalPriority = 1.9;
    const double value = ReadNumber(Settings::PriorityProcessor, NormalPriority);
    processes_.SetPriorityClass(PriorityClassOf(value));
    return value;
}

void Parameters::PriorityProcessor(double value) {
    SaveNumber(Settings::PriorityProcessor, value);
    processes_.SetPriorityClass(PriorityClassOf(value));
}

std::int32_t Parameters::CompressEncryptionLevel() {
    return ToInt32(ReadNumber(Settings::CompressEncryptionLevel, 0));
}

void Parameters::CompressEncryptionLevel(std::int32_t value) {
    SaveNumber(Settings::CompressEncryptionLevel, value);
}

std::int32_t Parameters::CompressEncryptionLenght() {
    return ToInt32(ReadNumber(Settings::CompressEncryptionLenght, -1));
}

void Parameters::CompressEncryptionLenght(std::int32_t value) {
    SaveNumber(Settings::CompressEncryptionLenght, value);
}

std::int32_t Parameters::CompressPasswordProtect() {
    return ToInt32(ReadNumber(Settings::CompressPasswordProtect, 0));
}

void Parameters::CompressPasswordProtect(std::int32_t value) {
    SaveNumber(Settings::CompressPasswordProtect, value);
}

std::string Parameters::CompressPassword() {
    return CryptPass(ReadText(Settings::CompressPassword, CryptPass("", true)), false);
}

void Parameters::CompressPassword(std::string_view value) {
    SaveText(Settings::CompressPassword, CryptPass(value, true));
}

std::int32_t Parameters::CompressLevel() {
    return ToInt32(ReadNumber(Settings::CompressLevel, 8));
}

void Parameters::CompressLevel(std::int32_t value) {
    SaveNumber(Settings::CompressLevel, value);
}

void Parameters::Fs(std::int16_t /*value*/) {
}

void Parameters::Fd(std::int16_t /*value*/) {
}

}  // namespace zarn
