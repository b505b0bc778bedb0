#include "settings/Files.h"

#include <algorithm>
#include <vector>

#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

void TryCreateFolder(FileSystem& fileSystem, std::string_view folder) {
    try {
        fileSystem.CreateFolder(folder);
    } catch (const RuntimeError&) {
        // Whoever has to be sure asks for the folder afterwards.
    }
}

}  // namespace

bool Files::FolderExist(std::string_view folder) {
    try {
        return fileSystem_.FolderExists(folder);
    } catch (const RuntimeError&) {
        return false;
    }
}

void Files::CreateFolder(std::string_view folder) {
    if (IsNetworkPath(folder)) {
        CreateFolderNetwork(folder);
    } else {
        CreateFolderLocal(folder);
    }
}

void Files::CreateFolderLocal(std::string_view folder) {
    if (folder.ends_with(R"(\\)")) {
        folder.remove_suffix(1);
    }
    if (!FolderExist(folder)) {
        TryCreateFolder(fileSystem_, folder);
    }
}

void Files::CreateFolderNetwork(std::string_view folder) {
    constexpr std::size_t ItemsOfShare = 4;  // \\server\share cannot be created
    if (folder == R"(\\)" || Split(folder, "\\").size() == ItemsOfShare ||
        GetUnitFreeSpace(folder) == MediaNotReady) {
        return;
    }
    TryCreateFolder(fileSystem_, folder);
}

bool Files::FoldersCreateAll(std::string_view folder) {
    if (Trim(folder).empty()) {
        return false;
    }
    const std::vector<std::string> items = Split(folder, "\\");
    const std::string root = items.front() + '\\';
    if (!CheckVolumeReady(root)) {
        return false;
    }
    try {
        fileSystem_.ChangeCurrentFolder(root);
        std::string level;
        for (const std::string& item : items) {
            level += item + '\\';
            if (!FolderExist(level)) {
                CreateFolder(level);
            }
            fileSystem_.ChangeCurrentFolder(root);
        }
        return true;
    } catch (const RuntimeError&) {
        messages_.Error("Error in Folder, Please check");
        return false;
    }
}

bool Files::FileExist(std::string_view path) {
    try {
        return fileSystem_.FindFile(path).has_value();
    } catch (const RuntimeError&) {
        return false;
    }
}

bool Files::HasNamesake(std::string_view path) {
    const std::string folder = FunctionPath(path);
    const std::string_view name = FunctionLastPathItem(path);
    try {
        const std::vector<std::string> names =
            fileSystem_.ListFolder(folder.empty() ? "." : std::string_view(folder));
        return std::ranges::any_of(names, [name](const std::string& other) {
            return other != name && UpperCase(other) == UpperCase(name);
        });
    } catch (const RuntimeError&) {
        return false;
    }
}

void Files::FilesAtt(std::string_view path) {
    if (FileExist(path)) {
        fileSystem_.SetNormalAttributes(path);
    }
}

void Files::FileDelete(std::string_view path) {
    if (Trim(path).empty() || !FileExist(path)) {
        return;
    }
    try {
        FilesAtt(path);
        fileSystem_.DeleteFile(path);
    } catch (const RuntimeError&) {
        // The file stays, as it does where the system refuses to delete it.
    }
}

// The attributes are taken off only the file that is meant; another keeps its own.
Deletion Files::FileDelete(std::string_view path, const FileIdentity& opened) {
    if (Trim(path).empty() || !FileExist(path)) {
        return Deletion::Missing;
    }
    try {
        std::optional<FileIdentity> found = fileSystem_.Identity(path);
        if (!found) {
            // A namesake that comes at this moment hides the name once, and has it from then on.
            found = fileSystem_.Identity(path);
        }
        if (found != opened) {
            return found             ? Deletion::OtherFile
                   : FileExist(path) ? Deletion::Refused
                                     : Deletion::Missing;
        }
        FilesAtt(path);
        return fileSystem_.DeleteSameFile(path, opened);
    } catch (const RuntimeError& error) {
        return error.Number() == ErrorNumber::FileNotFound ? Deletion::Missing : Deletion::Refused;
    }
}

double Files::FileSizeBytes(std::string_view path) {
    if (Trim(path).empty() || !FileExist(path)) {
        return 0;
    }
    return RoundHalfEven(fileSystem_.FileSize(path), 2);
}

bool Files::CheckFolderNames(std::string_view path) {
    return path.find_first_of(R"(/"<>?*|)") == std::string_view::npos;
}

std::string Files::ValidateFolderNames(std::string& folder) {
    folder = std::string(Trim(folder));
    if (!folder.ends_with('\\')) {
        folder += '\\';
    }
    return folder;
}

}  // namespace zarn
