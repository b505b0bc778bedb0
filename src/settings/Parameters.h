#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Processes.h"
#include "platform/Registry.h"
#include "runtime/Locale.h"
#include "settings/Files.h"
#include "settings/SettingsStore.h"

namespace zarn {

/// What a source is cut by: the values of `SplitCriteria`, and of the criterion of a job.
inline constexpr std::string_view SizeCriterion = "Size";
inline constexpr std::string_view PartsCriterion = "Parts";

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
    void TemporaryFolder(std::string_view value);
    [[nodiscard]] std::string CurrentVersion();
    void CurrentVersion(std::string_view value);

    // Last Used
    [[nodiscard]] std::string SavedBatchFile();
    void SavedBatchFile(std::string_view value);
    [[nodiscard]] std::string DestinationFolder();
    void DestinationFolder(std::string_view value);
    [[nodiscard]] std::int32_t ViewSideBar();
    void ViewSideBar(std::int32_t value);
    [[nodiscard]] std::string DestinationFolderMerge();
    void DestinationFolderMerge(std::string_view value);
    [[nodiscard]] std::int16_t DestinationFolderUseSource();
    void DestinationFolderUseSource(std::int16_t value);
    [[nodiscard]] std::int16_t DestinationFolderUseMerge();
    void DestinationFolderUseMerge(std::int16_t value);
    [[nodiscard]] std::int16_t DeleteSource();
    void DeleteSource(std::int16_t value);
    [[nodiscard]] std::int16_t DeleteSplitParts();
    /// Corrects the caller's variable: a text that is no number becomes 0, a value above 1
    /// becomes 1.
    void DeleteSplitParts(StoredValue& value);
    [[nodiscard]] std::int16_t CRC32();
    void CRC32(std::int16_t value);
    [[nodiscard]] std::int16_t SFV();
    void SFV(std::int16_t value);
    [[nodiscard]] std::string LastOpenFileFolder();
    void LastOpenFileFolder(std::string_view value);
    [[nodiscard]] std::string LastOpenFolderMergeFile();
    void LastOpenFolderMergeFile(std::string_view value);
    [[nodiscard]] std::string SplitCriteria();
    void SplitCriteria(std::string_view value);
    [[nodiscard]] std::int16_t SizeGB();
    void SizeGB(std::int16_t value);
    [[nodiscard]] std::int16_t SizeMB();
    void SizeMB(std::int16_t value);
    [[nodiscard]] std::string ComboSize();
    void ComboSize(std::string_view value);
    [[nodiscard]] std::int16_t CompressDestination();
    void CompressDestination(std::int16_t value);
    [[nodiscard]] std::int16_t AutoJoin();
    void AutoJoin(std::int16_t value);

    // Preferences
    /// Each get and each let also sets the priority class of the process by the value.
    [[nodiscard]] double PriorityProcessor();
    void PriorityProcessor(double value);
    [[nodiscard]] std::int32_t CompressEncryptionLevel();
    void CompressEncryptionLevel(std::int32_t value);
    [[nodiscard]] std::int32_t CompressEncryptionLenght();
    void CompressEncryptionLenght(std::int32_t value);
    [[nodiscard]] std::int32_t CompressPasswordProtect();
    void CompressPasswordProtect(std::int32_t value);
    /// Stored scrambled by `CryptPass`.
    [[nodiscard]] std::string CompressPassword();
    void CompressPassword(std::string_view value);
    [[nodiscard]] std::int32_t CompressLevel();
    void CompressLevel(std::int32_t value);

    // Held in memory only; a write assigns the current value to itself.
    [[nodiscard]] std::int16_t Fs() const { return fs_; }
    void Fs(std::int16_t value);
    [[nodiscard]] std::int16_t Fd() const { return fd_; }
    void Fd(std::int16_t value);

  private:
    /// Where a setting lies in the store.
    struct Setting {
        std::string_view key;
        std::string_view name;
    };
    struct Settings;

    [[nodiscard]] std::string StoredText(const Setting& setting);
    [[nodiscard]] std::string ReadText(const Setting& setting, std::string_view absent);
    [[nodiscard]] double ReadNumber(const Setting& setting, double absent);
    std::string SaveText(const Setting& setting, std::string_view value);
    void SaveNumber(const Setting& setting, double value);

    SettingsStore store_;
    Processes& processes_;
    FileSystem& fileSystem_;
    Files& files_;
    const LocaleSeparators& separators_;
    std::int16_t fs_ = 0;
    std::int16_t fd_ = 0;
};

/// The priority class that a value of `PriorityProcessor` stands for: at most 1 idle, at most 2
/// normal, at most 3 high, above that real time.
[[nodiscard]] PriorityClass PriorityClassOf(double value);

}  // namespace zarn
