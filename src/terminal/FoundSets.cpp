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

}  // namespace

bool ForEachSet(const std::vector<std::string>& files, const Workplace& place,
                const std::function<bool(const FoundSet&)>& job) {
    std::set<std::string> done;
    bool isGood = true;
    for (const std::string& file : files) {
        if (place.EndingSignals().IsHeld()) {
            return false;
        }
        try {
            const std::variant<UserPath, BadPath> path = place.paths.Of(file);
            if (const auto* reason = std::get_if<BadPath>(&path)) {
                place.console.Tell(file, *reason);
                isGood = false;
                continue;
            }
            const UserFolder folder = UserPaths::FolderOf(std::get<UserPath>(path));
            DiskFolder names(place, folder.path);
            std::variant<PartSet, NoSet> found = FindSet(std::get<UserPath>(path).Name(), names);
            if (const auto* reason = std::get_if<NoSet>(&found)) {
                place.console.Tell(file, *reason);
                isGood = false;
                continue;
            }
            const FoundSet set = {folder, std::move(std::get<PartSet>(found))};
            if (done.insert(folder.path + set.set.original + "\\" + set.set.checksums).second) {
                isGood = job(set) && isGood;
            }
        } catch (const RuntimeError& error) {
            place.console.Tell(file, error.what());
            isGood = false;
        }
    }
    return isGood;
}

}  // namespace zarn
