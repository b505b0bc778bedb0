#pragma once

#include <string_view>

#include "runtime/Product.h"

namespace zarn {

/// What a source is cut by: the values of `SplitCriteria`, and of the criterion of a job.
inline constexpr std::string_view SizeCriterion = "Size";
inline constexpr std::string_view PartsCriterion = "Parts";

/// Where a setting lies in the store, and its default.
struct TextSetting {
    std::string_view key;
    std::string_view name;
    std::string_view absent;
};
struct NumberSetting {
    std::string_view key;
    std::string_view name;
    double absent;
};

/// The settings of `Parameters`. Three defaults are empty here, because `Parameters` makes them:
/// those of the temporary folder, the folder of the batch file and the password.
struct Settings {
    static constexpr std::string_view General =
        R"(Software\Zarn Technology\Zarn File Splitter\General)";
    static constexpr std::string_view LastUsed =
        R"(Software\Zarn Technology\Zarn File Splitter\Last Used)";
    static constexpr std::string_view Preferences =
        R"(Software\Zarn Technology\Zarn File Splitter\Preferences)";

    static constexpr TextSetting TemporaryFolder = {General, "Temporary Folder", ""};
    static constexpr TextSetting CurrentVersion = {General, "Current Version", VersionText};
    static constexpr TextSetting SavedBatchFile = {LastUsed, "Saved Batch File", ""};
    static constexpr TextSetting DestinationFolder = {LastUsed, "Destination Folder", ""};
    static constexpr NumberSetting ViewSideBar = {LastUsed, "View Side Bar", 1};
    static constexpr TextSetting DestinationFolderMerge = {LastUsed, "Destination Folder Merge",
                                                           ""};
    static constexpr NumberSetting DestinationFolderUseSource = {
        LastUsed, "Destination Folder Use Source", 1};
    static constexpr NumberSetting DestinationFolderUseMerge = {LastUsed,
                                                                "Destination Folder Use Merge", 1};
    static constexpr NumberSetting DeleteSource = {LastUsed, "Delete Source", 0};
    static constexpr NumberSetting DeleteSplitParts = {LastUsed, "Delete Split Parts", 0};
    static constexpr NumberSetting CRC32 = {LastUsed, "CRC 32", 0};
    static constexpr NumberSetting SFV = {LastUsed, "SFV File", 0};
    static constexpr TextSetting LastOpenFileFolder = {LastUsed, "Last Open File Folder", R"(C:\)"};
    static constexpr TextSetting LastOpenFolderMergeFile = {LastUsed, "Last Open Folder Merge File",
                                                            R"(C:\)"};
    static constexpr TextSetting SplitCriteria = {LastUsed, "Split Criteria", SizeCriterion};
    static constexpr NumberSetting SizeGB = {LastUsed, "Compute GB", 0};
    static constexpr NumberSetting SizeMB = {LastUsed, "Compute MB", 1};
    static constexpr TextSetting ComboSize = {LastUsed, "Custom Sizes", ""};
    static constexpr NumberSetting CompressDestination = {LastUsed, "Compress Destination", 0};
    static constexpr NumberSetting AutoJoin = {LastUsed, "Auto Join", 1};
    static constexpr NumberSetting PriorityProcessor = {Preferences, "Priority Processor", 1.9};
    static constexpr NumberSetting CompressEncryptionLevel = {Preferences,
                                                              "Compress Encryption Level", 0};
    static constexpr NumberSetting CompressEncryptionLenght = {Preferences,
                                                               "Compress Encryption Lenght", -1};
    static constexpr NumberSetting CompressPasswordProtect = {Preferences,
                                                              "Compress Password Protect", 0};
    static constexpr TextSetting CompressPassword = {Preferences, "Compress Password", ""};
    static constexpr NumberSetting CompressLevel = {Preferences, "Compress Level", 8};
};

}  // namespace zarn
