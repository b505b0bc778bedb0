#include "platform/linux/FolderIndex.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>

#include "platform/linux/SystemPaths.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

// Above this a folder is read for every question: the hashes would cost too much memory.
constexpr std::size_t MostNames = 200'000;

// 64-bit FNV-1a.
std::uint64_t HashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : text) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
    return hash;
}

}  // namespace

bool FolderIndex::Stamp::operator==(const Stamp& other) const {
    return device == other.device && inode == other.inode &&
           modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec;
}

std::optional<FolderIndex::Stamp> FolderIndex::StampOf(const std::string& folder) {
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return Stamp{status.st_dev, status.st_ino, status.st_mtim};
}

bool FolderIndex::Knows(const std::string& folder) const {
    return stamp_ && folder == folder_ && StampOf(folder) == stamp_;
}

std::optional<std::string> FolderIndex::Find(const std::string& folder, std::string_view name) {
    const std::string folded = UpperCase(name);
    if (Knows(folder) && !std::binary_search(hashes_.begin(), hashes_.end(), HashOf(folded))) {
        return std::nullopt;
    }
    return Read(folder, folded);
}

void FolderIndex::TakeOver(const std::string& folder, std::string_view name) {
    const std::uint64_t hash = HashOf(UpperCase(name));
    const auto place = std::lower_bound(hashes_.begin(), hashes_.end(), hash);
    if (place == hashes_.end() || *place != hash) {
        hashes_.insert(place, hash);
    }
    stamp_ = hashes_.size() <= MostNames ? StampOf(folder) : std::nullopt;
}

std::optional<std::string> FolderIndex::Read(const std::string& folder, const std::string& folded) {
    // Taken before the reading, so that a name that comes while it goes on makes it void.
    stamp_ = StampOf(folder);
    folder_ = folder;
    hashes_.clear();
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.c_str()), closedir);
    if (!stream) {
        stamp_.reset();
        return std::nullopt;
    }
    std::string found;
    int matches = 0;
    while (const dirent* entry = readdir(stream.get())) {
        const std::string upper = UpperCase(&entry->d_name[0]);
        if (upper == folded) {
            found = &entry->d_name[0];
            ++matches;
        }
        if (hashes_.size() <= MostNames) {
            hashes_.push_back(HashOf(upper));
        }
    }
    if (hashes_.size() > MostNames) {
        hashes_ = {};
        stamp_.reset();
    }
    std::sort(hashes_.begin(), hashes_.end());
    return matches == 1 ? std::optional(found) : std::nullopt;
}

FolderChange::FolderChange(FolderIndex& index, std::string_view systemPath)
    : index_(index),
      folder_(SystemFolderOf(systemPath)),
      name_(SystemNameOf(systemPath)),
      known_(index_.Knows(folder_)) {
}

FolderChange::~FolderChange() {
    if (known_) {
        index_.TakeOver(folder_, name_);
    }
}

}  // namespace zarn
