#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Processes.h"
#include "platform/Registry.h"
#include "runtime/Locale.h"
#include "runtime/Numbers.h"
#include "settings/Files.h"
#include "settings/SettingsStore.h"
#include "settings/SettingsTable.h"

namespace zarn {

/// Everything that survives between runs. Each setting is a pair of overloads; reading goes to
/// the store every time, writing at once, and nothing is cached. Reading a setting that is absent
/// or stored as empty text gives its default and writes that to the store.
///
/// The type of a stored value is decided by the value: a text that reads as a number in the
/// locale is stored as a 32-bit integer, rounded half to even, and comes back as that number's
/// text; other texts lose the blanks at both ends. Raises overflow for a number beyond 32 bits,
/// and type mismatch where a numeric setting holds a text that is no number.
class Parameters {
  public:
    /// Writes the version to the store. All arguments must outlive this object.
    Parameters(Registry& registry, Processes& processes, FileSystem& fileSystem, Files& files,
               const LocaleSeparators& separators);

    // General
    [[nodiscard]] std::string TemporaryFolder();
    void TemporaryFolder(std::string_view value) { SaveText(Settings::TemporaryFolder, value); }
    [[nodiscard]] std::string CurrentVersion() { return Text(Settings::CurrentVersion); }
    void CurrentVersion(std::string_view value) { SaveText(Settings::CurrentVersion, value); }

    // Last Used
    [[nodiscard]] std::string SavedBatchFile();
    void SavedBatchFile(std::string_view value) { SaveText(Settings::SavedBatchFile, value); }
    [[nodiscard]] std::string DestinationFolder() { return Text(Settings::DestinationFolder); }
    void DestinationFolder(std::string_view value) { SaveText(Settings::DestinationFolder, value); }
    [[nodiscard]] std::int32_t ViewSideBar() { return Int32(Settings::ViewSideBar); }
    void ViewSideBar(std::int32_t value) { SaveNumber(Settings::ViewSideBar, value); }
    [[nodiscard]] std::string DestinationFolderMerge() {
        return Text(Settings::DestinationFolderMerge);
    }
    void DestinationFolderMerge(std::string_view value) {
        SaveText(Settings::DestinationFolderMerge, value);
    }
    [[nodiscard]] std::int16_t DestinationFolderUseSource() {
        return Int16(Settings::DestinationFolderUseSource);
    }
    void DestinationFolderUseSource(std::int16_t value) {
        SaveNumber(Settings::DestinationFolderUseSource, value);
    }
    [[nodiscard]] std::int16_t DestinationFolderUseMerge() {
        return Int16(Settings::DestinationFolderUseMerge);
    }
    void DestinationFolderUseMerge(std::int16_t value) {
        SaveNumber(Settings::DestinationFolderUseMerge, value);
    }
    [[nodiscard]] std::int16_t DeleteSource() { return Int16(Settings::DeleteSource); }
    void DeleteSource(std::int16_t value) { SaveNumber(Settings::DeleteSource, value); }
    [[nodiscard]] std::int16_t DeleteSplitParts() { return Int16(Settings::DeleteSplitParts); }
    /// Corrects the caller's variable: a text that is no number becomes 0, a value above 1
    /// becomes 1.
    void DeleteSplitParts(StoredValue& value);
    [[nodiscard]] std::int16_t CRC32() { return Int16(Settings::CRC32); }
    void CRC32(std::int16_t value) { SaveNumber(Settings::CRC32, value); }
    [[nodiscard]] std::int16_t SFV() { return Int16(Settings::SFV); }
    void SFV(std::int16_t value) { SaveNumber(Settings::SFV, value); }
    [[nodiscard]] std::string LastOpenFileFolder() { return Text(Settings::LastOpenFileFolder); }
    void LastOpenFileFolder(std::string_view value) {
        SaveText(Settings::LastOpenFileFolder, value);
    }
    [[nodiscard]] std::string LastOpenFolderMergeFile() {
        return Text(Settings::LastOpenFolderMergeFile);
    }
    void LastOpenFolderMergeFile(std::string_view value) {
        SaveText(Settings::LastOpenFolderMergeFile, value);
    }
    [[nodiscard]] std::string SplitCriteria() { return Text(Settings::SplitCriteria); }
    void SplitCriteria(std::string_view value) { SaveText(Settings::SplitCriteria, value); }
    [[nodiscard]] std::int16_t SizeGB() { return Int16(Settings::SizeGB); }
    void SizeGB(std::int16_t value) { SaveNumber(Settings::SizeGB, value); }
    [[nodiscard]] std::int16_t SizeMB() { return Int16(Settings::SizeMB); }
    void SizeMB(std::int16_t value) { SaveNumber(Settings::SizeMB, value); }
    [[nodiscard]] std::string ComboSize() { return Text(Settings::ComboSize); }
    void ComboSize(std::string_view value) { SaveText(Settings::ComboSize, value); }
    [[nodiscard]] std::int16_t CompressDestination() {
        return Int16(Settings::CompressDestination);
    }
    void CompressDestination(std::int16_t value) {
        SaveNumber(Settings::CompressDestination, value);
    }
    [[nodiscard]] std::int16_t AutoJoin() { return Int16(Settings::AutoJoin); }
    void AutoJoin(std::int16_t value) { SaveNumber(Settings::AutoJoin, value); }

    // Preferences
    /// Each get and each let also sets the priority class of the process by the value.
    [[nodiscard]] double PriorityProcessor();
    void PriorityProcessor(double value);
    [[nodiscard]] std::int32_t CompressEncryptionLevel() {
        return Int32(Settings::CompressEncryptionLevel);
    }
    void CompressEncryptionLevel(std::int32_t value) {
        SaveNumber(Settings::CompressEncryptionLevel, value);
    }
    [[nodiscard]] std::int32_t CompressEncryptionLenght() {
        return Int32(Settings::CompressEncryptionLenght);
    }
    void CompressEncryptionLenght(std::int32_t value) {
        SaveNumber(Settings::CompressEncryptionLenght, value);
    }
    [[nodiscard]] std::int32_t CompressPasswordProtect() {
        return Int32(Settings::CompressPasswordProtect);
    }
    void CompressPasswordProtect(std::int32_t value) {
        SaveNumber(Settings::CompressPasswordProtect, value);
    }
    /// Stored scrambled by `CryptPass`.
    [[nodiscard]] std::string CompressPassword();
    void CompressPassword(std::string_view value);
    /// The password of a ZIP: empty where `CompressPasswordProtect` is not 1. Nothing where it is,
    /// but what is stored cannot come from a password that `KeepsPassword` lets through: a ZIP
    /// would be open, or need another password than the one that was typed.
    [[nodiscard]] std::optional<std::string> ZipPassword();
    [[nodiscard]] std::int32_t CompressLevel() { return Int32(Settings::CompressLevel); }
    void CompressLevel(std::int32_t value) { SaveNumber(Settings::CompressLevel, value); }

    // Held in memory only; a write assigns the current value to itself.
    [[nodiscard]] std::int16_t Fs() const { return fs_; }
    void Fs(std::int16_t /*value*/) {}
    [[nodiscard]] std::int16_t Fd() const { return fd_; }
    void Fd(std::int16_t /*value*/) {}

  private:
    [[nodiscard]] std::string StoredText(const TextSetting& setting);
    [[nodiscard]] std::string Text(const TextSetting& setting);
    [[nodiscard]] double Number(const NumberSetting& setting);
    [[nodiscard]] std::int16_t Int16(const NumberSetting& setting) {
        return ToInt16(Number(setting));
    }
    [[nodiscard]] std::int32_t Int32(const NumberSetting& setting) {
        return ToInt32(Number(setting));
    }
    std::string SaveText(const TextSetting& setting, std::string_view value);
    void SaveNumber(const NumberSetting& setting, double value);

    SettingsStore store_;
    Processes& processes_;
    FileSystem& fileSystem_;
    Files& files_;
    const LocaleSeparators& separators_;
    std::int16_t fs_ = 0;
    std::int16_t fd_ = 0;
};

/// True if the store gives a password back as it is. It does not if the code page lacks one of the
/// characters, or if the scrambled text loses a blank at an end. A scrambled text that reads as a
/// number in the locale does not count either: as a number in the store it could be another one's.
[[nodiscard]] bool KeepsPassword(std::string_view password, const LocaleSeparators& separators);

/// The message where `ZipPassword` gives nothing.
inline constexpr std::string_view LostPasswordText =
    "The stored password cannot be the one that was typed.\r"
    "Please type it again on the Preferences page.";

/// The priority class that a value of `PriorityProcessor` stands for: at most 1 idle, at most 2
/// normal, at most 3 high, above that real time.
[[nodiscard]] PriorityClass PriorityClassOf(double value);

}  // namespace zarn
