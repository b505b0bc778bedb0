#pragma once

#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace zarn {

/// One offer of an open or save dialog: "Zarn Join Files (*.bat)" for "*.bat".
struct FileFilter {
    std::string_view label;
    std::string_view pattern;
};

/// The dialogs in which a user names a file or a folder. Paths go in and come out in the program's
/// form. Each waits for the user and gives nothing if it was cancelled.
class FileDialogs {
  public:
    FileDialogs() = default;
    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;
    virtual ~FileDialogs() = default;

    /// `start` is the folder to begin in, or a file in it; a path that does not exist, or an empty
    /// one, leaves the choice to the dialog.
    [[nodiscard]] virtual std::optional<std::string> OpenFile(QWidget* owner,
                                                              std::string_view title,
                                                              FileFilter filter,
                                                              std::string_view start) = 0;

    /// Likewise for a file to be written, which need not exist. The dialog itself asks before it
    /// gives the path of one that does. A name that was typed without any ending gets that of the
    /// filter.
    [[nodiscard]] virtual std::optional<std::string> SaveFile(QWidget* owner,
                                                              std::string_view title,
                                                              FileFilter filter,
                                                              std::string_view start) = 0;

    [[nodiscard]] virtual std::optional<std::string> PickFolder(QWidget* owner,
                                                                std::string_view title,
                                                                std::string_view start) = 0;
};

}  // namespace zarn
