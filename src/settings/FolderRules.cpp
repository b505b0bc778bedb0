#include "settings/FolderRules.h"

#include "runtime/Text.h"

namespace zarn {

namespace {

bool IsMissing(Files& files, std::string_view folder) {
    return !Trim(folder).empty() && !files.FolderExist(std::string(folder) + '\\');
}

}  // namespace

std::string FunctionParentFolder(std::string_view path) {
    return Files::FunctionPath(path);
}

bool IsTooShort(std::string_view text) {
    return Length(Trim(text)) < 2;
}

bool IsMalformedFolder(std::string_view text) {
    return !IsTooShort(text) && !IsNetworkPath(text) && Mid(text, 2, 2) != R"(:\)";
}

bool IsNoFolderPath(std::string_view text) {
    return IsTooShort(text) || IsMalformedFolder(text);
}

bool IsDisketteFolder(std::string_view path) {
    return path.starts_with("A:") || path.starts_with("B:");
}

FolderState FolderAtEnter(Files& files, std::string_view folder) {
    if (files.FolderExist(folder)) {
        return FolderState::Exists;
    }
    return IsMissing(files, folder) ? FolderState::ToBeMade : FolderState::None;
}

FolderState FolderAtStart(Files& files, std::string_view folder) {
    if (!Trim(folder).empty() && files.FolderExist(folder)) {
        return FolderState::Exists;
    }
    const bool canBeMade = IsMissing(files, folder) && Files::CheckFolderNames(folder) &&
                           files.GetUnitFreeSpace(folder) != MediaNotReady;
    return canBeMade ? FolderState::ToBeMade : FolderState::None;
}

JobPaths JudgeJobPaths(Files& files, std::string_view file, std::string_view folder) {
    if (Trim(file).empty() || Trim(folder).empty()) {
        return JobPaths::Unnamed;
    }
    const bool isFolder = Files::CheckFolderNames(folder) && files.FolderExist(folder);
    return isFolder ? JobPaths::Ready : JobPaths::NoFolder;
}

}  // namespace zarn
