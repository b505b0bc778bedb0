#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "settings/Files.h"

namespace zarn {

namespace {

/// Fills the buffer from the start of a file; returns what there was to read.
std::string_view ReadStart(LargeFileAccess& file, std::span<char> buffer) {
    std::size_t size = 0;
    while (size < buffer.size()) {
        const std::size_t count = file.Read(std::as_writable_bytes(buffer.subspan(size)));
        if (count == 0) {
            break;
        }
        size += count;
    }
    return {buffer.data(), size};
}

/// Counts the lines of a text that comes in pieces.
class LineCounter {
  public:
    void Add(std::span<const std::byte> piece) {
        for (const std::byte byte : piece) {
            const auto character = static_cast<char>(byte);
            ended_ += character == '\r' || (character == '\n' && last_ != '\r') ? 1 : 0;
            last_ = character;
        }
    }

    /// What follows the last end of a line is a line too.
    [[nodiscard]] double Lines() const { return ended_ + (last_ == '\r' || last_ == '\n' ? 0 : 1); }

  private:
    double ended_ = 0;
    char last_ = '\n';  ///< as if a line had ended before the text
};

std::string TwoDigits(int value) {
    return PadLeft(std::to_string(value), 2, '0');
}

}  // namespace

std::string Files::FileList(std::string_view folder) {
    const std::string start = std::string(folder) + '\\';
    if (!fileSystem_.FolderExists(start)) {
        return {};
    }
    for (const std::string& entry : fileSystem_.ListFolder(start)) {
        std::string path = start + entry;
        if ((fileSystem_.Attributes(path).value_or(0) & AttributeFolder) != 0) {
            fileSystem_.ChangeCurrentFolder(path);
            return path;
        }
    }
    return {};
}

std::string Files::DeleteFolder(std::string_view folder) {
    return FileList(folder);
}

std::int32_t Files::FileLenght(std::string_view path) {
    return ToInt32(fileSystem_.FileSize(path));
}

void Files::FileDeleteAll(std::string_view folder, std::string_view pattern) {
    const std::string start(folder);
    while (const auto name = fileSystem_.FindFile(start + std::string(pattern))) {
        FilesAtt(start + *name);
        FileDelete(start + *name);
    }
}

std::int32_t Files::CountFileRecords(std::string_view path) {
    constexpr std::size_t PieceSize = std::size_t{256} * 1024;
    const auto file = fileSystem_.MakeLargeFile();
    file->Open(path);
    std::vector<std::byte> piece(PieceSize);
    LineCounter counter;
    while (const std::size_t count = file->Read(piece)) {
        counter.Add(std::span(piece).first(count));
    }
    return ToInt32(counter.Lines());
}

std::string Files::FileDate(std::string_view path) {
    constexpr DateTime EmptyTimeStamp = {1601, 1, 1, 0, 0, 0};
    constexpr int Noon = 12;
    const DateTime time = fileSystem_.WriteTime(path).value_or(EmptyTimeStamp);
    const bool isPastNoonHour = time.hour > Noon;
    const int hour = isPastNoonHour ? time.hour - Noon : time.hour;
    return std::to_string(time.month) + '/' + std::to_string(time.day) + '/' +
           std::to_string(time.year) + ' ' + std::to_string(hour) + ':' + TwoDigits(time.minute) +
           ':' + TwoDigits(time.second) + (isPastNoonHour ? " PM" : " AM");
}

std::string Files::ValidateFileNames(std::string_view /*fileName*/) {
    return {};
}

bool Files::CheckVaqlidJoinFiles(std::string_view path) {
    constexpr std::size_t LeastSize = 11;
    const std::size_t point = path.rfind('.');
    if (point == std::string_view::npos) {
        return false;
    }
    const std::string extension = UpperCase(path.substr(point + 1));
    if (extension != "BAT" && extension != "SFV") {
        return false;
    }
    const auto file = fileSystem_.MakeLargeFile();
    file->Open(path);
    std::array<char, LeastSize> buffer{};
    const std::string_view start = ReadStart(*file, buffer);
    return start.size() == LeastSize &&
           (start.starts_with("@Echo off") || start.starts_with(";----"));
}

bool Files::CheckLongFileName(std::string_view path) {
    constexpr std::size_t Longest = 100;
    return Trim(path).empty() || Length(FunctionLastPathItem(path)) <= Longest;
}

bool Files::CheckValidFile(std::string_view path) {
    return !FileLocked(path);
}

bool Files::FileLocked(std::string_view path) {
    // A folder with any other attributes passes for a file.
    constexpr std::array<std::uint32_t, 5> Folders = {16, 17, 18, 48, 2066};
    const std::uint32_t attributes = fileSystem_.Attributes(path).value_or(0);
    return std::find(Folders.begin(), Folders.end(), attributes) != Folders.end();
}

bool Files::CheckLockFiles(std::string_view path) {
    try {
        return FileExist(path) && !Trim(path).empty() && fileSystem_.OpensExclusively(path);
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace zarn
