#include "platform/linux/FolderIndex.h"

#include <dirent.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SystemPaths.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

// Above this a folder is read for every question: the hashes would cost too much memory.
constexpr std::size_t MostNames = 200'000;

std::size_t HashOf(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

}  // namespace

bool FolderIndex::Knows(const std::string& folder) const {
    return stamp_ && folder == folder_ && IdentityOf(folder) == stamp_;
}

std::optional<std::string> FolderIndex::Find(const std::string& folder, std::string_view name) {
    const std::string folded = UpperCase(name);
    if (Knows(folder) && !std::binary_search(hashes_.begin(), hashes_.end(), HashOf(folded))) {
        return std::nullopt;
    }
    return Read(folder, folded);
}

void FolderIndex::TakeOver(const std::string& folder, std::string_view name) {
    const std::size_t hash = HashOf(UpperCase(name));
    const auto place = std::lower_bound(hashes_.begin(), hashes_.end(), hash);
    if (place == hashes_.end() || *place != hash) {
        hashes_.insert(place, hash);
    }
    stamp_ = hashes_.size() <= MostNames ? IdentityOf(folder) : std::nullopt;
}

std::optional<std::string> FolderIndex::Read(const std::string& folder, const std::string& folded) {
    // Taken before the reading, so that a name that comes while it goes on makes it void.
    stamp_ = IdentityOf(folder);
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
