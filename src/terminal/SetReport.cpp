#include "terminal/SetReport.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

#include "runtime/Text.h"
#include "terminal/ChecksumPass.h"
#include "terminal/Sizes.h"

namespace zarn {

namespace {

std::string ChecksumText(std::uint32_t checksum) {
    constexpr std::size_t Digits = 8;
    constexpr int Hexadecimal = 16;
    std::array<char, Digits> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), checksum, Hexadecimal);
    return PadLeft(UpperCase(std::string_view(text.data(), end.ptr)), Digits, '0');
}

std::optional<FileIdentity> FileAt(const std::string& path, FileSystem& disk) {
    const std::optional<std::uint32_t> attributes = disk.Attributes(path);
    const bool isFile = attributes && (*attributes & AttributeFolder) == 0;
    return isFile ? disk.Identity(path) : std::nullopt;
}

class SetChecker {
  public:
    SetChecker(const FoundSet& found, std::string_view stage, const Workplace& place)
        : found_(found), set_(found.set), stage_(stage), place_(place) {}

    SetReport Check();

  private:
    void AddTask(const std::string& name, double bytes);
    bool ReadFiles();
    void JudgePart(std::size_t index, bool isLast);
    void JudgeOther(const SetMember& other);
    void JudgeWhole();
    bool JudgeChecksum(const SetMember& member);
    [[nodiscard]] std::string OddLength(std::int64_t length, bool isLast) const;
    void Add(const std::string& name, std::string text, bool isFault = true);

    const FoundSet& found_;
    const PartSet& set_;
    std::string_view stage_;
    const Workplace& place_;
    SetReport report_;
    std::vector<ChecksumTask> tasks_;
    std::map<std::string, std::size_t> taskOf_;  ///< by name
    double bytesToRead_ = 0;
    std::int64_t usual_ = 0;
};

SetReport SetChecker::Check() {
    report_ = LookAtParts(found_, place_.Disk());
    std::vector<std::int64_t> lengths;
    for (std::size_t index = 0; index < set_.parts.size(); ++index) {
        const std::optional<FileIdentity>& file = report_.parts[index];
        if (file) {
            lengths.push_back(file->size);
        }
        if (file && (set_.parts[index].checksum || set_.wholeChecksum)) {
            AddTask(set_.parts[index].name, static_cast<double>(file->size));
        }
    }
    usual_ = UsualLength(lengths);
    for (const SetMember& other : set_.others) {
        const auto file = FileAt(found_.folder.path + other.name, place_.Disk());
        if (file && other.checksum) {
            AddTask(other.name, static_cast<double>(file->size));
        }
    }
    if (!tasks_.empty() && !ReadFiles()) {
        report_.isInterrupted = true;
        return report_;
    }
    for (std::size_t index = 0; index < set_.parts.size(); ++index) {
        JudgePart(index, index + 1 == set_.parts.size());
    }
    JudgeWhole();
    for (const SetMember& other : set_.others) {
        JudgeOther(other);
    }
    for (const std::string& name : set_.surplus) {
        Add(name, "surplus: it is no part of the set");
    }
    return report_;
}

void SetChecker::AddTask(const std::string& name, double bytes) {
    taskOf_.emplace(name, tasks_.size());
    tasks_.push_back({found_.folder.path + name, 0, {}, {}});
    bytesToRead_ += bytes;
}

bool SetChecker::ReadFiles() {
    const Reading reading = set_.wholeChecksum ? Reading::Together : Reading::Apart;
    return ComputeChecksums(tasks_, reading, bytesToRead_, stage_, place_);
}

void SetChecker::JudgePart(std::size_t index, bool isLast) {
    const SetMember& part = set_.parts[index];
    const std::optional<FileIdentity>& file = report_.parts[index];
    if (!file) {
        return Add(part.name, "missing");
    }
    if (!part.problem.empty()) {
        Add(part.name, part.problem);
    }
    const bool isRight = JudgeChecksum(part);
    if (isRight && part.checksum) {
        return;
    }
    if (file->size == 0) {
        return Add(part.name, "empty");
    }
    const std::string odd = OddLength(file->size, isLast);
    if (!odd.empty()) {
        return Add(part.name, odd);
    }
    if (isRight && part.problem.empty()) {
        Add(part.name, "there", false);
    }
}

// True also where there is nothing to hold the file against.
bool SetChecker::JudgeChecksum(const SetMember& member) {
    const auto found = taskOf_.find(member.name);
    if (found == taskOf_.end()) {
        return true;
    }
    ChecksumTask& task = tasks_[found->second];
    if (task.error) {
        Add(member.name, std::string("it cannot be read: ") + ErrorText(*task.error));
        return false;
    }
    if (member.checksum && task.checksum != *member.checksum) {
        Add(member.name, "checksum " + ChecksumText(task.checksum) + " instead of " +
                             ChecksumText(*member.checksum));
        return false;
    }
    if (member.checksum) {
        Add(member.name, "ok", false);
    }
    return true;
}

void SetChecker::JudgeOther(const SetMember& other) {
    if (!other.problem.empty()) {
        Add(other.name, other.problem);
    } else if (!taskOf_.contains(other.name)) {
        Add(other.name, "missing");
    } else {
        static_cast<void>(JudgeChecksum(other));
    }
}

// Of parts that lack there is nothing more to be said.
void SetChecker::JudgeWhole() {
    const bool hasAll =
        std::ranges::all_of(report_.parts, [](const auto& part) { return part.has_value(); });
    const bool areRead =
        std::ranges::none_of(tasks_, [](const auto& task) { return task.error.has_value(); });
    if (!hasAll || !areRead || (!set_.wholeSize && !set_.wholeChecksum)) {
        return;
    }
    if (set_.wholeSize && *set_.wholeSize != report_.bytes) {
        return Add(set_.checksums, "the parts have " + SizeInBytes(report_.bytes) + " instead of " +
                                       SizeInBytes(*set_.wholeSize));
    }
    if (set_.wholeChecksum && !tasks_.empty() && tasks_.back().checksum != *set_.wholeChecksum) {
        return Add(set_.checksums, "the parts have the checksum " +
                                       ChecksumText(tasks_.back().checksum) + " instead of " +
                                       ChecksumText(*set_.wholeChecksum));
    }
    Add(set_.checksums, "ok", false);
}

std::string SetChecker::OddLength(std::int64_t length, bool isLast) const {
    const bool isOdd = isLast ? length > usual_ : length != usual_;
    return isOdd ? "odd length: " + SizeInBytes(static_cast<double>(length)) + " instead of " +
                       (isLast ? "at most " : "") + SizeInBytes(static_cast<double>(usual_))
                 : std::string();
}

void SetChecker::Add(const std::string& name, std::string text, bool isFault) {
    report_.findings.push_back({name, std::move(text), isFault});
}

}  // namespace

std::size_t SetReport::Faults() const {
    return static_cast<std::size_t>(std::ranges::count_if(findings, &Finding::isFault));
}

SetReport LookAtParts(const FoundSet& found, FileSystem& disk) {
    SetReport report;
    for (const SetMember& part : found.set.parts) {
        report.parts.push_back(FileAt(found.folder.path + part.name, disk));
        report.bytes += report.parts.back() ? static_cast<double>(report.parts.back()->size) : 0;
    }
    return report;
}

SetReport CheckSet(const FoundSet& found, std::string_view stage, const Workplace& place) {
    return SetChecker(found, stage, place).Check();
}

std::int64_t UsualLength(const std::vector<std::int64_t>& lengths) {
    std::map<std::int64_t, std::size_t> counts;
    for (std::size_t index = 0; index < lengths.size(); ++index) {
        counts[lengths[index]] += index + 1 < lengths.size() || lengths.size() == 1 ? 1U : 0U;
    }
    std::pair<std::size_t, std::int64_t> best = {0, 0};
    for (const auto& [length, count] : counts) {
        best = std::max(best, {count, length});
    }
    return best.second;
}

}  // namespace zarn
