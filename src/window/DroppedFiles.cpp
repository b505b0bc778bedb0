#include "window/DroppedFiles.h"

#include <QByteArray>
#include <QMimeData>

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

bool HoldsFiles(const QMimeData& data) {
    return data.hasFormat(UriList);
}

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

}  // namespace zarn
