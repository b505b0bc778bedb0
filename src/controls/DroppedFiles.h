#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

class QMimeData;
class QWidget;

namespace zarn {

/// The program's paths of the files in a drop, in its order: one element for each item of the list.
/// An item that has no drive path (a name with a backslash, a file of another computer, an address
/// that is no file's) gives an empty text. Names need not be UTF-8.
[[nodiscard]] std::vector<std::string> FilesOf(const QMimeData& data, FileSystem& fileSystem);

/// Takes the files that are dropped on a field and leaves all other drops to it. The files are
/// handed on as `FilesOf` gives them, after the drop's own event has returned: until then, whoever
/// they came from waits.
class FileDrop : public QObject {
    Q_OBJECT

  public:
    using Take = std::function<void(const std::vector<std::string>& files)>;

    /// `field` and `fileSystem` must outlive this object. An error that `take` raises leaves it as
    /// an error of an event handler.
    FileDrop(QWidget& field, FileSystem& fileSystem, Take take);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    FileSystem& fileSystem_;
    Take take_;
};

}  // namespace zarn
