#include "platform/linux/RegistryFile.h"

#include "platform/linux/UserFolders.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

const RegistryValue* FindValue(const RegistryKeys& keys, std::string_view key,
                               std::string_view name) {
    const auto foundKey = keys.find(UpperCase(key));
    if (foundKey == keys.end()) {
        return nullptr;
    }
    const auto entry = foundKey->second.entries.find(UpperCase(name));
    return entry == foundKey->second.entries.end() ? nullptr : &entry->second.value;
}

void PutValue(RegistryKeys& keys, std::string_view key, std::string_view name,
              const RegistryValue& value) {
    auto& entries = MakeRegistryKey(keys, key).entries;
    entries.try_emplace(UpperCase(name), RegistryEntry{std::string(name), {}, {}})
        .first->second.value = value;
}

/// False if there is no such value.
bool EraseValue(RegistryKeys& keys, std::string_view key, std::string_view name) {
    const auto found = keys.find(UpperCase(key));
    return found != keys.end() && found->second.entries.erase(UpperCase(name)) > 0;
}

bool Holds(const RegistryKeys& keys, std::string_view key, std::string_view name,
           const RegistryValue& value) {
    const RegistryValue* held = FindValue(keys, key, name);
    return held != nullptr && held->type == value.type &&
           (value.type == RegistryType::Text ? held->text == value.text
                                             : held->number == value.number);
}

}  // namespace

RegistryFile::RegistryFile(std::string folder) : disk_(std::move(folder)) {
}

bool RegistryFile::KeyExists(RegistryHive /*hive*/, std::string_view key) {
    const std::string path = UpperCase(key);
    return Read().contains(path) || unwritten_.contains(path);
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
    unanswered_.reset();
    const RegistryValue* value = FindValue(unwritten_, key, name);
    if (value == nullptr) {
        value = FindValue(Read(), key, name);
        if (!unreadable_.empty()) {
            unanswered_.emplace(key, name);
        }
    }
    return value == nullptr ? std::nullopt : std::optional(*value);
}

RegistryStatus RegistryFile::SetValue(RegistryHive /*hive*/, std::string_view key,
                                      std::string_view name, const RegistryValue& value) {
    if (!IsRegistryPath(key) || !IsRegistryName(name) || value.type == RegistryType::Other) {
        return RegistryStatus::Failed;
    }
    const auto unanswered = std::exchange(unanswered_, std::nullopt);
    if (unanswered && unanswered->first == key && unanswered->second == name) {
        SayNothingIsKept();
        return RegistryStatus::Failed;
    }
    const auto put = [&](RegistryKeys& keys) {
        PutValue(keys, key, name, value);
        return RegistryStatus::Success;
    };
    if (!Holds(Read(), key, name, value) && Apply(put) != RegistryStatus::Success) {
        SayNothingIsKept();
        PutValue(unwritten_, key, name, value);
        return RegistryStatus::Failed;
    }
    EraseValue(unwritten_, key, name);
    return RegistryStatus::Success;
}

RegistryStatus RegistryFile::DeleteKey(RegistryHive /*hive*/, std::string_view key) {
    unwritten_.erase(UpperCase(key));
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
    EraseValue(unwritten_, key, name);
    return Apply([key, name](RegistryKeys& keys) {
        return EraseValue(keys, key, name) ? RegistryStatus::Success : RegistryStatus::NotFound;
    });
}

RegistryStatus RegistryFile::Apply(const Change& change) {
    const FileDescriptor lock = disk_.Lock();
    const std::optional<std::string> text = lock.IsOpen() ? disk_.Read() : std::nullopt;
    if (!text) {
        return RegistryStatus::Failed;
    }
    std::optional<RegistryKeys> keys = ParseRegistry(*text, &badLine_);
    if (!keys) {
        const std::string kept = disk_.KeepAside();
        if (kept.empty()) {
            return RegistryStatus::Failed;
        }
        NoteDamage(kept);
        keys.emplace();
    }
    const std::string before = FormatRegistry(*keys);
    const RegistryStatus status = change(*keys);
    if (status != RegistryStatus::Success) {
        return status;
    }
    const std::string after = FormatRegistry(*keys);
    return after == before || disk_.Replace(after) ? RegistryStatus::Success
                                                   : RegistryStatus::Failed;
}

const RegistryKeys& RegistryFile::Read() {
    // Taken before the reading, so that a change that comes meanwhile shows at the next read.
    const FileStamp now = disk_.Stamp();
    if (stamp_ == now) {
        return keys_;
    }
    const std::optional<std::string> text = disk_.Read();
    unreadable_ = text ? std::string() : disk_.Failure();
    keys_ = ParseRegistry(text.value_or(""), &badLine_).value_or(RegistryKeys());
    // What cannot be read now may be readable at the next call, with the same stamp.
    stamp_ = text ? std::optional(now) : std::nullopt;
    return keys_;
}

void RegistryFile::NoteDamage(const std::string& keptAs) {
    notice_ = "The settings file cannot be read, since its line " +
              std::to_string(std::exchange(badLine_, 0)) + " is wrong.\rIt is kept as\r" + keptAs +
              "\rAll settings have their defaults now.";
}

/// A damaged file that has to stay in its place is told of here.
void RegistryFile::SayNothingIsKept() {
    if (badLine_ != 0) {
        NoteDamage(disk_.File());
    }
    if (std::exchange(hasSaid_, true)) {
        return;
    }
    SayOfUserFiles(unreadable_.empty()
                       ? "cannot write its settings (" + disk_.Failure() +
                             "). Nothing is kept after this run."
                       : "cannot read its settings (" + unreadable_ +
                             "). It uses the defaults, and nothing is kept after this run.");
}

}  // namespace zarn
