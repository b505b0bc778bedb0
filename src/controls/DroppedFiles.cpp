#include "controls/DroppedFiles.h"

#include <QByteArray>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTimer>
#include <QWidget>
#include <utility>

#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr const char* UriList = "text/uri-list";

/// The absolute path in a file's address, "file:///a/b", "file://localhost/a/b" or "file:/a/b";
/// empty for any other address. The bytes of the path are what is encoded, whatever they mean.
std::string SystemPathOf(std::string_view address) {
    constexpr std::string_view Scheme = "file:";
    constexpr std::string_view LocalHost = "//localhost/";
    if (!address.starts_with(Scheme)) {
        return {};
    }
    address.remove_prefix(Scheme.size());
    if (address.starts_with(LocalHost)) {
        address.remove_prefix(LocalHost.size() - 1);
    } else if (address.starts_with("///")) {
        address.remove_prefix(2);
    }
    if (!address.starts_with('/') || address.starts_with("//")) {
        return {};
    }
    return QByteArray::fromPercentEncoding(
               QByteArray(address.data(), static_cast<qsizetype>(address.size())))
        .toStdString();
}

}  // namespace

std::vector<std::string> FilesOf(const QMimeData& data, FileSystem& fileSystem) {
    std::vector<std::string> files;
    const std::string list = data.data(UriList).toStdString();
    for (const std::string& line : Split(Replace(list, "\r", ""), "\n")) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const std::string path = SystemPathOf(line);
        files.push_back(path.empty() ? path : fileSystem.DrivePath(path).value_or(std::string()));
    }
    return files;
}

FileDrop::FileDrop(QWidget& field, FileSystem& fileSystem, Take take)
    : fileSystem_(fileSystem), take_(std::move(take)) {
    field.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
    const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
    if (!isDrag && event->type() != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto& drop = static_cast<QDropEvent&>(*event);
    if (!drop.mimeData()->hasFormat(UriList)) {
        return QObject::eventFilter(watched, event);
    }
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    if (!isDrag) {
        QTimer::singleShot(
            0, this, [this, files = FilesOf(*drop.mimeData(), fileSystem_)] { take_(files); });
    }
    return true;
}

}  // namespace zarn
