#include "settings/PreferencesState.h"

#include "runtime/Text.h"
#include "settings/FolderRules.h"

namespace zarn {

namespace {

bool IsBlank(std::string_view text) {
    return Trim(text).empty();
}

PasswordState JudgePasswords(const Preferences& page, std::string_view confirmation) {
    if (!IsBlank(page.password) && IsBlank(confirmation)) {
        return {" Confirmation password field is empty ", true, {}};
    }
    if (!IsBlank(page.password) && page.password != confirmation) {
        return {" Password and confirmation do not match ", true, {}};
    }
    const bool isMissing = page.security && IsBlank(page.password) && IsBlank(confirmation);
    return {isMissing ? " Password and confirmation are empty " : "", false, page.security};
}

}  // namespace

Preferences StoredPreferences(Parameters& parameters) {
    return {parameters.TemporaryFolder(), parameters.CompressLevel(),
            parameters.CompressPasswordProtect() == 1, parameters.CompressPassword()};
}

PreferencesState JudgePreferences(const Preferences& page, std::string_view confirmation,
                                  const Preferences& stored) {
    constexpr PreferencesState Malformed = {false, true, {}};
    constexpr PreferencesState Changed = {true, false, {}};
    if (IsTooShort(page.folder)) {
        return Malformed;
    }
    if (page.level != stored.level) {
        return Changed;
    }
    if (IsMalformedFolder(page.folder)) {
        return Malformed;
    }
    if (page != stored) {
        return Changed;
    }
    return {false, false, JudgePasswords(page, confirmation)};
}

std::string_view ApplyRefusal(const Preferences& page, std::string_view confirmation,
                              const LocaleSeparators& separators) {
    if (page.security && IsBlank(page.password)) {
        return "Password field is empty    ";
    }
    if (page.security && page.password != confirmation) {
        return "Passwords do not match   ";
    }
    if (page.security && !KeepsPassword(page.password, separators)) {
        return "This password cannot be stored exactly as it was typed.\r"
               "Please choose another one. Letters that are not Western European cannot be stored.";
    }
    return {};
}

FolderState FolderAtApply(Files& files, std::string_view folder) {
    if (IsBlank(folder)) {
        return FolderState::None;
    }
    const FolderState state = FolderAtEnter(files, folder);
    const bool isRefused = state == FolderState::ToBeMade && !Files::CheckFolderNames(folder);
    return isRefused ? FolderState::None : state;
}

}  // namespace zarn
