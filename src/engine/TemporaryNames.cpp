#include "engine/TemporaryNames.h"

#include "runtime/Text.h"

namespace zarn {

namespace {

std::string TemporaryName(std::string_view source, std::string_view temporaryFolder,
                          std::string_view extension) {
    constexpr std::size_t ExtensionLength = 4;
    const std::string_view name = FunctionLastPathItem(source);
    const std::string_view ending = Right(name, ExtensionLength);
    std::string path(temporaryFolder);
    if (!ending.empty()) {
        path += Replace(name, ending, "");
    }
    return path.append(extension);
}

}  // namespace

std::string FunctionZipTempName(std::string_view source, std::string_view temporaryFolder) {
    return TemporaryName(source, temporaryFolder, ".zip");
}

std::string FunctionExeTempName(std::string_view source, std::string_view temporaryFolder) {
    return TemporaryName(source, temporaryFolder, ".exe");
}

std::string FunctionFolderPlusName(std::string_view folder, std::string_view path) {
    std::string result(folder);
    if (!folder.ends_with('\\')) {
        result += '\\';
    }
    return result.append(FunctionLastPathItem(path));
}

}  // namespace zarn
