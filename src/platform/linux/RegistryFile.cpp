#include "platform/linux/RegistryFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <span>
#include <utility>

#include "platform/linux/UserFolders.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view FileName = "settings.reg";
constexpr std::string_view NewMark = ".new-";

bool IsThere(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

bool FlushFolder(const std::string& folder) {
    const FileDescriptor file = OpenFile(folder, O_RDONLY | O_DIRECTORY);
    return file.IsOpen() && FlushToMedium(file);
}

// A file that came here by a copy may be open to others. Where it is not it is left alone: setting
// its rights would make another state of the file, to be read anew.
void CloseToOthers(const FileDescriptor& file) {
    constexpr mode_t OwnerOnly = 0600;
    constexpr mode_t Rights = 0777;
    struct stat status = {};
    if (fstat(file.Number(), &status) == 0 && (status.st_mode & Rights) != OwnerOnly) {
        static_cast<void>(fchmod(file.Number(), OwnerOnly));
    }
}

/// Takes the file over and closes it with everything on the medium.
bool WriteAndFlush(FileDescriptor file, std::string_view text) {
    try {
        WriteAll(file, std::as_bytes(std::span(text)));
        const bool flushed = FlushToMedium(file);
        file.Close();
        return flushed;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace

RegistryFile::RegistryFile(std::string folder)
    : folder_(std::move(folder)), file_(folder_ + '/' + std::string(FileName)) {
}

bool RegistryFile::KeyExists(RegistryHive /*hive*/, std::string_view key) {
    return Read().contains(UpperCase(key));
}

RegistryStatus RegistryFile::CreateKey(RegistryHive /*hive*/, std::string_view key) {
    if (!IsRegistryPath(key)) {
        return RegistryStatus::Failed;
    }
    return Apply([key](RegistryKeys& keys) {
        MakeRegistryKey(keys, key);
        return RegistryStatus::Success;
    });
}

std::optional<RegistryValue> RegistryFile::QueryValue(RegistryHive /*hive*/, std::string_view key,
                                                      std::string_view name) {
    const RegistryKeys& keys = Read();
    const auto foundKey = keys.find(UpperCase(key));
    if (foundKey == keys.end()) {
        return std::nullopt;
    }
    const auto& entries = foundKey->second.entries;
    const auto entry = entries.find(UpperCase(name));
    return entry == entries.end() ? std::nullopt : std::optional(entry->second.value);
}

RegistryStatus RegistryFile::SetValue(RegistryHive /*hive*/, std::string_view key,
                                      std::string_view name, const RegistryValue& value) {
    if (!IsRegistryPath(key) || !IsRegistryName(name) || value.type == RegistryType::Other) {
        return RegistryStatus::Failed;
    }
    if (Holds(key, name, value)) {
        return RegistryStatus::Success;
    }
    return Apply([&](RegistryKeys& keys) {
        // It would be a default for what the store may well hold.
        if (!isReadable_) {
            return RegistryStatus::Failed;
        }
        auto& entries = MakeRegistryKey(keys, key).entries;
        entries.try_emplace(UpperCase(name), RegistryEntry{std::string(name), {}, {}})
            .first->second.value = value;
        return RegistryStatus::Success;
    });
}

RegistryStatus RegistryFile::DeleteKey(RegistryHive /*hive*/, std::string_view key) {
    return Apply([key](RegistryKeys& keys) {
        const std::string path = UpperCase(key);
        const auto below = keys.lower_bound(path + '\\');
        if (below != keys.end() && below->first.starts_with(path + '\\')) {
            return RegistryStatus::Failed;
        }
        return keys.erase(path) == 0 ? RegistryStatus::NotFound : RegistryStatus::Success;
    });
}

RegistryStatus RegistryFile::DeleteValue(RegistryHive /*hive*/, std::string_view key,
                                         std::string_view name) {
    return Apply([key, name](RegistryKeys& keys) {
        const auto found = keys.find(UpperCase(key));
        const bool erased = found != keys.end() && found->second.entries.erase(UpperCase(name)) > 0;
        return erased ? RegistryStatus::Success : RegistryStatus::NotFound;
    });
}

RegistryStatus RegistryFile::Apply(const Change& change) const {
    const FileDescriptor lock = Lock();
    const std::optional<std::string> text = lock.IsOpen() ? ReadText() : std::nullopt;
    if (!text) {
        return RegistryStatus::Failed;
    }
    std::optional<RegistryKeys> keys = ParseRegistry(*text);
    if (!keys) {
        if (!KeepAside()) {
            return RegistryStatus::Failed;
        }
        keys.emplace();
    }
    const std::string before = FormatRegistry(*keys);
    const RegistryStatus status = change(*keys);
    if (status != RegistryStatus::Success) {
        return status;
    }
    const std::string after = FormatRegistry(*keys);
    return after == before || Replace(after) ? RegistryStatus::Success : RegistryStatus::Failed;
}

bool RegistryFile::Stamp::operator==(const Stamp& other) const {
    const auto same = [](const timespec& one, const timespec& two) {
        return one.tv_sec == two.tv_sec && one.tv_nsec == two.tv_nsec;
    };
    return device == other.device && inode == other.inode && size == other.size &&
           same(modified, other.modified) && same(changed, other.changed);
}

RegistryFile::Stamp RegistryFile::StampOfFile() const {
    struct stat status = {};
    if (stat(file_.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim, status.st_ctim};
}

const RegistryKeys& RegistryFile::Read() {
    // Taken before the reading, so that a change that comes meanwhile shows at the next read.
    const Stamp now = StampOfFile();
    if (stamp_ != now) {
        const std::optional<std::string> text = ReadText();
        isReadable_ = text.has_value();
        keys_ = text ? ParseRegistry(*text).value_or(RegistryKeys()) : RegistryKeys();
        stamp_ = now;
    }
    return keys_;
}

bool RegistryFile::Holds(std::string_view key, std::string_view name, const RegistryValue& value) {
    const std::optional<RegistryValue> held = QueryValue(RegistryHive::CurrentUser, key, name);
    return held && held->type == value.type &&
           (value.type == RegistryType::Text ? held->text == value.text
                                             : held->number == value.number);
}

/// Empty for a missing file; nothing for one that cannot be read.
std::optional<std::string> RegistryFile::ReadText() const {
    constexpr std::size_t Limit = 1 << 24;
    const FileDescriptor file = OpenFile(file_, O_RDONLY);
    if (!file.IsOpen()) {
        const bool isMissing = (errno == ENOENT || errno == ENOTDIR) && !IsThere(file_);
        return isMissing ? std::optional(std::string()) : std::nullopt;
    }
    CloseToOthers(file);
    try {
        std::string text = ReadToEnd(file, Limit);
        return text.size() < Limit ? std::optional(std::move(text)) : std::nullopt;
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

/// Holds until the descriptor is closed, also by the end of the process.
FileDescriptor RegistryFile::Lock() const {
    constexpr unsigned OwnerOnly = 0600;
    if (!MakeUserFolder(folder_)) {
        return {};
    }
    FileDescriptor lock =
        OpenFile(folder_ + "/settings.lock", O_RDWR | O_CREAT | O_NOFOLLOW, OwnerOnly);
    while (lock.IsOpen() && flock(lock.Number(), LOCK_EX) != 0) {
        if (errno != EINTR) {
            return {};
        }
    }
    return lock;
}

bool RegistryFile::KeepAside() const {
    const std::string first = file_ + ".damaged";
    std::string path = first;
    for (int number = 2; IsThere(path); ++number) {
        path = first + '-' + std::to_string(number);
    }
    return std::rename(file_.c_str(), path.c_str()) == 0;
}

bool RegistryFile::Replace(std::string_view text) const {
    RemoveLeftOvers();
    std::string path = file_ + std::string(NewMark);
    FileDescriptor file = MakeUniqueFile(path);
    if (!file.IsOpen()) {
        return false;
    }
    if (!WriteAndFlush(std::move(file), text) || std::rename(path.c_str(), file_.c_str()) != 0) {
        unlink(path.c_str());
        return false;
    }
    return FlushFolder(folder_);
}

/// What a process left that was killed while it wrote.
void RegistryFile::RemoveLeftOvers() const {
    const std::string start = std::string(FileName) + std::string(NewMark);
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder_.c_str()), closedir);
    while (const dirent* entry = stream ? readdir(stream.get()) : nullptr) {
        const std::string_view name = &entry->d_name[0];
        if (name.starts_with(start)) {
            unlinkat(dirfd(stream.get()), &entry->d_name[0], 0);
        }
    }
}

}  // namespace zarn
