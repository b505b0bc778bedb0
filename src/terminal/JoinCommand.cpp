#include "terminal/JoinCommand.h"

#include <algorithm>
#include <chrono>
#include <map>

#include "join/JoinScriptRunner.h"
#include "scripts/SetNames.h"
#include "terminal/SetReport.h"
#include "terminal/Sizes.h"

namespace zarn {

namespace {

/// The join of one set.
class SetJoin {
  public:
    /// `made` has the files that this run has joined before; the new one is added.
    SetJoin(const FoundSet& found, const JoinOptions& options, const Workplace& place,
            std::vector<FileIdentity>& made)
        : found_(found),
          set_(found.set),
          options_(options),
          place_(place),
          disk_(place.Disk()),
          made_(made),
          target_(found.folder) {}

    bool Run();

  private:
    // Each tells what is wrong and gives false then.
    [[nodiscard]] bool ChooseTarget();
    [[nodiscard]] bool MayJoin();
    [[nodiscard]] bool HasAllParts();
    [[nodiscard]] bool HasNoOtherParts();
    [[nodiscard]] bool MayTakeName();
    [[nodiscard]] bool MayReplaceOlder();
    [[nodiscard]] bool HasRoom();
    [[nodiscard]] bool PartsAreRight();
    [[nodiscard]] bool Join();
    [[nodiscard]] bool PartsAreUnchanged();
    [[nodiscard]] bool DeleteSet();

    [[nodiscard]] JoinScript Plan() const;
    [[nodiscard]] bool Delete(const std::string& name, const std::optional<FileIdentity>& file);
    [[nodiscard]] bool Fail(const UserPath& path, std::string_view reason);

    const FoundSet& found_;
    const PartSet& set_;
    const JoinOptions& options_;
    const Workplace& place_;
    FileSystem& disk_;
    std::vector<FileIdentity>& made_;
    UserFolder target_;
    UserPath joined_;
    SetReport report_;
    std::map<std::string, std::optional<FileIdentity>> beside_;  ///< script and checksum file
};

bool SetJoin::Run() {
    const auto begun = std::chrono::steady_clock::now();
    if (!ChooseTarget() || !MayJoin() || !PartsAreRight() || !Join()) {
        return false;
    }
    place_.console.Line(joined_.shown);
    const bool isDone = !options_.deleteParts || DeleteSet();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
    place_.console.Summary(CountText(set_.parts.size(), "part") + ", " + SizeText(report_.bytes) +
                           ", " + TimeText(taken.count()) + " -> " + joined_.shown);
    return isDone;
}

bool SetJoin::Fail(const UserPath& path, std::string_view reason) {
    place_.console.Tell(path.shown, reason);
    return false;
}

bool SetJoin::ChooseTarget() {
    if (!options_.folder.empty()) {
        std::variant<UserFolder, BadPath> folder = place_.paths.Folder(options_.folder);
        if (const auto* reason = std::get_if<BadPath>(&folder)) {
            place_.console.Tell(options_.folder, *reason);
            return false;
        }
        target_ = std::move(std::get<UserFolder>(folder));
    }
    joined_ = target_.At(set_.original);
    return true;
}

bool SetJoin::MayJoin() {
    if (set_.parts.empty()) {
        return Fail(found_.folder.At(set_.checksums), "it names no parts of a file");
    }
    report_ = LookAtParts(found_, disk_);
    for (const std::string& name : {set_.script, set_.checksums}) {
        if (!name.empty()) {
            beside_[name] = disk_.Identity(found_.folder.path + name);
        }
    }
    return HasAllParts() && HasNoOtherParts() && MayTakeName() && HasRoom();
}

bool SetJoin::HasAllParts() {
    bool hasAll = true;
    for (std::size_t index = 0; index < set_.parts.size(); ++index) {
        if (!report_.parts[index]) {
            hasAll = Fail(found_.folder.At(set_.parts[index].name), "this part is missing");
        }
    }
    return hasAll;
}

// Without a script nothing else shows that the set has more parts, and what is to be verified or
// deleted has to be the whole of it.
bool SetJoin::HasNoOtherParts() {
    bool isWhole = true;
    if (set_.script.empty()) {
        for (const std::string& name : set_.surplus) {
            isWhole = Fail(found_.folder.At(name), "it may be a part, but is none of this set");
        }
    }
    if (set_.script.empty() || options_.verify || options_.deleteParts) {
        for (const SetMember& other : set_.others) {
            if (IsPartOf(other.name, set_.original) && !PartDigits(other.name).empty()) {
                isWhole = Fail(found_.folder.At(other.name),
                               "the checksum file has this part, and the set has not");
            }
        }
    }
    return isWhole;
}

bool SetJoin::MayTakeName() {
    if (!IsGoodOriginal(set_.original, set_.script)) {
        return Fail(joined_, "a joined file cannot have this name");
    }
    if (!disk_.IsShortEnough(joined_.path)) {
        return Fail(joined_, "the name is too long");
    }
    return !disk_.HasExactName(joined_.path) || MayReplaceOlder();
}

bool SetJoin::MayReplaceOlder() {
    const std::optional<std::uint32_t> attributes = disk_.Attributes(joined_.path);
    if (attributes && (*attributes & AttributeFolder) != 0) {
        return Fail(joined_, "there is a folder of this name");
    }
    const FileIdentity older = disk_.Identity(joined_.path).value_or(FileIdentity());
    const auto isOlder = [&older](const std::optional<FileIdentity>& file) {
        return file && file->IsSameFile(older);
    };
    if (std::ranges::any_of(report_.parts, isOlder) ||
        std::ranges::any_of(beside_, isOlder, [](const auto& file) { return file.second; })) {
        return Fail(joined_, "it is a file of the set itself");
    }
    if (std::ranges::any_of(made_, isOlder)) {
        return Fail(joined_, "it has just been joined from another set");
    }
    return options_.force || Fail(joined_, "there is such a file; --force replaces it");
}

bool SetJoin::HasRoom() {
    const std::string lack = place_.LacksRoom(target_, report_.bytes);
    return lack.empty() || Fail(joined_, lack);
}

// What is to be deleted must be right, and what a CRC file tells is always asked.
bool SetJoin::PartsAreRight() {
    if (options_.verify && !set_.HasChecksums()) {
        return Fail(joined_, "there are no checksums to hold its parts against");
    }
    const bool isWanted =
        options_.verify || options_.deleteParts || set_.wholeChecksum || set_.wholeSize;
    if (!isWanted || set_.checksums.empty()) {
        return true;
    }
    FoundSet parts = found_;
    parts.set.others.clear();
    parts.set.surplus.clear();
    report_ = CheckSet(parts, "verifying", place_);
    for (const Finding& finding : report_.findings) {
        if (finding.isFault) {
            place_.console.Tell(found_.folder.At(finding.name).shown, finding.text);
        }
    }
    return !report_.isInterrupted && report_.Faults() == 0;
}

JoinScript SetJoin::Plan() const {
    JoinScript plan;
    plan.original = set_.original;
    for (const SetMember& part : set_.parts) {
        const ScriptAction action =
            plan.commands.empty() ? ScriptAction::MakeTemporary : ScriptAction::AppendPart;
        plan.commands.push_back({action, found_.folder.path + part.name, {}});
    }
    if (options_.force && disk_.HasExactName(joined_.path)) {
        plan.commands.push_back({ScriptAction::DeleteOriginal, {}, {}});
    }
    plan.commands.push_back({ScriptAction::RenameTemporary, {}, {}});
    return plan;
}

// The file is built in its folder, be the parts on a medium that cannot be written.
bool SetJoin::Join() {
    disk_.ChangeCurrentFolder(target_.path);
    const JoinScript plan = Plan();
    double done = 0;
    Console& console = place_.console;
    console.BeginStage("joining", report_.bytes);
    const ScriptOutcome outcome =
        JoinScriptRunner(disk_, place_.EndingSignals(), plan, {}, {}, [&](std::int64_t bytes) {
            done += static_cast<double>(bytes);
            console.Advance(done);
        }).Run();
    console.EndStage();
    if (place_.EndingSignals().IsHeld() && outcome.status != ScriptStatus::Done) {
        return false;
    }
    if (outcome.status != ScriptStatus::Done) {
        return Fail(joined_, found_.folder.Shown(outcome.message));
    }
    const std::optional<FileIdentity> built = disk_.Identity(joined_.path);
    if (built) {
        made_.push_back(*built);
    }
    if (!PartsAreUnchanged()) {
        if (built) {
            disk_.DeleteSameFile(joined_.path, *built);
        }
        return false;
    }
    return (built && static_cast<double>(built->size) == report_.bytes) ||
           Fail(joined_, "it has not the size of its parts");
}

// What was looked at, and perhaps verified, is what was joined.
bool SetJoin::PartsAreUnchanged() {
    for (std::size_t index = 0; index < set_.parts.size(); ++index) {
        const UserPath part = found_.folder.At(set_.parts[index].name);
        if (disk_.Identity(part.path) != report_.parts[index]) {
            return Fail(part, "it was changed while it was joined");
        }
    }
    return true;
}

// The files that were looked at are deleted, and only if they have not changed since.
bool SetJoin::DeleteSet() {
    disk_.FlushVolume(target_.path);
    bool isDone = true;
    for (std::size_t index = 0; index < set_.parts.size(); ++index) {
        isDone = Delete(set_.parts[index].name, report_.parts[index]) && isDone;
    }
    for (const auto& [name, file] : beside_) {
        isDone = Delete(name, file) && isDone;
    }
    return isDone;
}

bool SetJoin::Delete(const std::string& name, const std::optional<FileIdentity>& file) {
    const UserPath path = found_.folder.At(name);
    switch (file ? disk_.DeleteSameFile(path.path, *file) : Deletion::Missing) {
        case Deletion::Done:
            return true;
        case Deletion::Missing:
            return Fail(path, "it was to be deleted, and is not there any more");
        case Deletion::OtherFile:
            return Fail(path, "it was not deleted: it is not the file that was joined");
        case Deletion::Refused:
            return Fail(path, "it cannot be deleted");
    }
    return false;
}

}  // namespace

bool RunJoin(const JoinOptions& options, const Workplace& place) {
    std::vector<FileIdentity> made;
    return ForEachSet(options.files, place, [&](const FoundSet& found) {
        return SetJoin(found, options, place, made).Run();
    });
}

}  // namespace zarn
