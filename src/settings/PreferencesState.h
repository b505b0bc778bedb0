#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/FolderRules.h"
#include "settings/Parameters.h"

namespace zarn {

/// The settings that the preferences page holds back until they are applied: as its controls have
/// them, or as they are stored.
struct Preferences {
    std::string folder;      ///< for temporary files
    std::int32_t level = 0;  ///< of compression
    bool security = false;   ///< the password counts
    std::string password;

    bool operator==(const Preferences&) const = default;
};

/// Reads the four settings from the store.
[[nodiscard]] Preferences StoredPreferences(Parameters& parameters);

/// How the password fields are to look.
struct PasswordState {
    std::string_view caption;             ///< the warning; empty: none is shown
    bool confirmationIsWrong = false;     ///< the second field takes the warning's colour
    std::optional<bool> fieldsAreActive;  ///< none: they stay as they are
};

/// What the page is to show.
struct PreferencesState {
    bool changed = false;                    ///< there is something to apply or to undo
    bool folderIsMalformed = false;          ///< the folder is red, else black
    std::optional<PasswordState> passwords;  ///< none: they stay as they are
};

/// Compares the page with the store. Of several findings the first counts: a folder of less than
/// two characters, another level, a malformed folder, any other difference. The passwords are
/// looked at only where nothing differs: while a new one is being typed nobody complains, and what
/// is wrong with it is said when it is applied.
[[nodiscard]] PreferencesState JudgePreferences(const Preferences& page,
                                                std::string_view confirmation,
                                                const Preferences& stored);

/// Why the page cannot be applied; empty where it can. A password that the store would not give
/// back is refused, since ZIPs would then be encrypted with another one.
[[nodiscard]] std::string_view ApplyRefusal(const Preferences& page, std::string_view confirmation,
                                            const LocaleSeparators& separators);

/// The temporary folder when it is to be used: it exists, the user is to be asked about it, or the
/// system's folder takes its place.
[[nodiscard]] FolderState FolderAtApply(Files& files, std::string_view folder);

}  // namespace zarn
