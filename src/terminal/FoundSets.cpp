#include "terminal/FoundSets.h"

#include <set>

#include "join/ScriptInterpreter.h"
#include "runtime/RuntimeError.h"
#include "scripts/SfvReader.h"

namespace zarn {

namespace {

class DiskFolder : public SetFolder {
  public:
    DiskFolder(const Workplace& place, const std::string& path)
        : place_(place), path_(path), names_(place.Disk().ListFolder(path)) {}

    [[nodiscard]] const std::vector<std::string>& Names() override { return names_; }

    [[nodiscard]] std::variant<JoinScript, ScriptRefusal> Script(const std::string& name) override {
        return ScriptInterpreter(place_.Disk(), place_.EndingSignals()).Check(path_ + name, {});
    }

    [[nodiscard]] std::optional<std::string> Text(const std::string& name) override {
        FileSystem& disk = place_.Disk();
        if (disk.FileSize(path_ + name) > static_cast<double>(LargestSfv)) {
            return std::nullopt;
        }
        return disk.ReadFile(path_ + name, LargestSfv);
    }

  private:
    const Workplace& place_;
    const std::string& path_;
    std::vector<std::string> names_;
};

// The set, or why there is none.
std::variant<FoundSet, NoSet> FindOnDisk(const std::string& file, const Workplace& place) {
    try {
        const std::variant<UserPath, BadPath> path = place.paths.Of(file);
        if (const auto* reason = std::get_if<BadPath>(&path)) {
            return *reason;
        }
        const UserFolder folder = UserPaths::FolderOf(std::get<UserPath>(path));
        DiskFolder names(place, folder.path);
        std::variant<PartSet, NoSet> found = FindSet(std::get<UserPath>(path).Name(), names);
        if (auto* reason = std::get_if<NoSet>(&found)) {
            return std::move(*reason);
        }
        return FoundSet{file, folder, std::move(std::get<PartSet>(found))};
    } catch (const RuntimeError& error) {
        return NoSet(error.what());
    }
}

}  // namespace

bool ForEachSet(const std::vector<std::string>& files, const Workplace& place,
                const std::function<bool(const FoundSet&)>& job) {
    std::set<std::string> known;
    std::vector<FoundSet> sets;
    bool isGood = true;
    for (const std::string& file : files) {
        std::variant<FoundSet, NoSet> found = FindOnDisk(file, place);
        if (const auto* reason = std::get_if<NoSet>(&found)) {
            place.console.Tell(file, *reason);
            isGood = false;
            continue;
        }
        auto& set = std::get<FoundSet>(found);
        if (known.insert(set.folder.path + set.set.original + "\\" + set.set.checksums).second) {
            sets.push_back(std::move(set));
        }
    }
    for (const FoundSet& set : sets) {
        try {
            isGood = !place.EndingSignals().IsHeld() && job(set) && isGood;
        } catch (const RuntimeError& error) {
            place.console.Tell(set.file, error.what());
            isGood = false;
        }
    }
    return isGood;
}

}  // namespace zarn
