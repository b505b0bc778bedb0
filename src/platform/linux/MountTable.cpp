#include "platform/linux/MountTable.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

std::string DecodeOctal(std::string_view text) {
    std::string decoded;
    while (!text.empty()) {
        unsigned code = 0;
        std::size_t length = 1;
        if (text.front() == '\\' && text.size() > 3 &&
            std::from_chars(text.data() + 1, text.data() + 4, code, 8).ptr == text.data() + 4) {
            decoded += static_cast<char>(code & 0xFFU);
            length = 4;
        } else {
            decoded += text.front();
        }
        text.remove_prefix(length);
    }
    return decoded;
}

// "8:17"
bool ReadDeviceNumber(std::string_view text, Mount& mount) {
    const char* end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, mount.major);
    if (first.ptr == end || *first.ptr != ':') {
        return false;
    }
    return std::from_chars(first.ptr + 1, end, mount.minor).ptr == end;
}

std::optional<Mount> ParseLine(std::string_view line) {
    constexpr std::size_t DeviceField = 2;
    constexpr std::size_t PointField = 4;
    constexpr std::size_t OptionsField = 5;
    const std::vector<std::string> fields = Split(line, " ");
    if (fields.size() <= OptionsField) {
        return std::nullopt;
    }
    // Any number of tags stands between the options and the dash.
    const auto dash = std::find(fields.begin() + OptionsField, fields.end(), "-");
    Mount mount;
    if (fields.end() - dash < 3 || !ReadDeviceNumber(fields[DeviceField], mount)) {
        return std::nullopt;
    }
    mount.point = DecodeOctal(fields[PointField]);
    mount.fileSystem = DecodeOctal(*(dash + 1));
    mount.source = DecodeOctal(*(dash + 2));
    return mount;
}

}  // namespace

dev_t DeviceOf(const Mount& mount) {
    struct stat status = {};
    const bool isDevice = stat(mount.source.c_str(), &status) == 0 && S_ISBLK(status.st_mode);
    return isDevice ? status.st_rdev : gnu_dev_makedev(mount.major, mount.minor);
}

std::vector<Mount> ParseMountInfo(std::string_view text) {
    std::map<std::string, Mount> byPoint;
    for (const std::string& line : Split(text, "\n")) {
        if (std::optional<Mount> mount = ParseLine(line)) {
            byPoint.insert_or_assign(mount->point, *mount);
        }
    }
    std::vector<Mount> mounts;
    mounts.reserve(byPoint.size());
    for (auto& [point, mount] : byPoint) {
        mounts.push_back(std::move(mount));
    }
    return mounts;
}

bool MountTable::Update() {
    constexpr std::size_t Limit = std::size_t{16} * 1024 * 1024;
    if (file_.IsOpen()) {
        pollfd change = {file_.Number(), POLLPRI, 0};
        if (poll(&change, 1, 0) <= 0 || (change.revents & (POLLPRI | POLLERR)) == 0) {
            return false;
        }
        lseek(file_.Number(), 0, SEEK_SET);
    } else {
        file_ = OpenFile("/proc/self/mountinfo", O_RDONLY);
        if (!file_.IsOpen()) {
            return false;
        }
    }
    try {
        mounts_ = ParseMountInfo(ReadToEnd(file_, Limit));
    } catch (const RuntimeError&) {
        mounts_.clear();
    }
    return true;
}

}  // namespace zarn
