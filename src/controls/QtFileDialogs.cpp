#include "controls/QtFileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>

#include "controls/GuardedApplication.h"
#include "controls/QtText.h"

namespace zarn {

namespace {

// What the label says of the pattern is all that is shown of it. "*.*" means every name, which the
// toolkit says otherwise.
void SetFilter(QFileDialog& dialog, const FileFilter& filter) {
    const std::string_view pattern = filter.pattern == "*.*" ? "*" : filter.pattern;
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilter(ToQt(filter.label) + " (" + ToQt(pattern) + ")");
}

void StartIn(QFileDialog& dialog, const QString& start) {
    const QFileInfo info(start);
    if (info.isDir()) {
        dialog.setDirectory(start);
    } else {
        dialog.setDirectory(info.path());
        if (dialog.fileMode() != QFileDialog::Directory) {
            dialog.selectFile(info.fileName());
        }
    }
}

}  // namespace

std::optional<std::string> QtFileDialogs::OpenFile(QWidget* owner, std::string_view title,
                                                   FileFilter filter, std::string_view start) {
    QFileDialog dialog(owner, ToQt(title));
    dialog.setFileMode(QFileDialog::ExistingFile);
    SetFilter(dialog, filter);
    return Pick(dialog, start);
}

std::optional<std::string> QtFileDialogs::SaveFile(QWidget* owner, std::string_view title,
                                                   FileFilter filter, std::string_view start) {
    QFileDialog dialog(owner, ToQt(title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    SetFilter(dialog, filter);
    // Else the question whether a file is to be replaced would be about a name without its ending.
    dialog.setDefaultSuffix(QFileInfo(ToQt(filter.pattern)).suffix());
    return Pick(dialog, start);
}

std::optional<std::string> QtFileDialogs::PickFolder(QWidget* owner, std::string_view title,
                                                     std::string_view start) {
    QFileDialog dialog(owner, ToQt(title));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return Pick(dialog, start);
}

std::optional<std::string> QtFileDialogs::Pick(QFileDialog& dialog, std::string_view start) {
    if (const std::optional<std::string> path = fileSystem_.SystemPath(start)) {
        StartIn(dialog, ToQt(*path));
    }
    const bool isPicked = dialog.exec() == QDialog::Accepted;
    GuardedApplication::RethrowRaised();
    if (!isPicked) {
        return std::nullopt;
    }
    const std::string picked = FromQt(dialog.selectedFiles().value(0));
    std::optional<std::string> path = fileSystem_.DrivePath(picked);
    if (!path) {
        boxes_.Show({"Error", "A name with a backslash in it cannot be used here:\r" + picked,
                     BoxIcon::Exclamation, BoxButtons::Ok});
    }
    return path;
}

}  // namespace zarn
