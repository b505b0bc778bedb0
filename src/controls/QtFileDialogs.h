#pragma once

#include "controls/FileDialogs.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"

class QFileDialog;

namespace zarn {

/// The toolkit's dialogs. A name without a drive path, since it holds a backslash, cannot be
/// picked: the user is told so, and nothing comes back. All calls raise what a handler raised
/// meanwhile.
class QtFileDialogs : public FileDialogs {
  public:
    /// Both must outlive this object.
    QtFileDialogs(FileSystem& fileSystem, MessageBoxes& boxes)
        : fileSystem_(fileSystem), boxes_(boxes) {}

    [[nodiscard]] std::optional<std::string> OpenFile(QWidget* owner, std::string_view title,
                                                      FileFilter filter,
                                                      std::string_view start) override;
    [[nodiscard]] std::optional<std::string> SaveFile(QWidget* owner, std::string_view title,
                                                      FileFilter filter,
                                                      std::string_view start) override;
    [[nodiscard]] std::optional<std::string> PickFolder(QWidget* owner, std::string_view title,
                                                        std::string_view start) override;

  private:
    [[nodiscard]] std::optional<std::string> Pick(QFileDialog& dialog, std::string_view start);

    FileSystem& fileSystem_;
    MessageBoxes& boxes_;
};

}  // namespace zarn
