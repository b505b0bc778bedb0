#include "terminal/SplitPlan.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

constexpr double MostParts = 9999;

// An archive of bytes that do not shrink is a little longer than they are.
double MostBytesToCut(const SplitOptions& options, double size) {
    constexpr double Overhead = 4096;
    constexpr double Share = 1000;
    return options.level ? size + size / Share + Overhead : size;
}

double CountOfParts(const SplitOptions& options, double size) {
    return options.size
               ? std::ceil(MostBytesToCut(options, size) / static_cast<double>(*options.size))
               : options.count;
}

std::string RefuseNames(SplitPlan& plan, double count, FileSystem& disk) {
    // It takes blanks in front of a name for none of it.
    if (!IsGoodOriginal(plan.stem, {}) || plan.stem.starts_with(' ')) {
        return "no join script can hold a file of this name";
    }
    if (count > MostParts) {
        return "it would become more than 9999 parts";
    }
    plan.firstPart = PartPath(plan.folder.path + plan.stem, 1, count);
    const std::string script =
        PathBesideParts(FunctionLastPathItem(plan.firstPart), plan.folder.path, ScriptEnding);
    return disk.IsShortEnough(script) ? std::string() : "its name is too long for parts and script";
}

// Opened, since only that tells whether it can be read.
std::string RefuseSource(SplitPlan& plan, FileSystem& disk) {
    const std::optional<std::uint32_t> attributes = disk.Attributes(plan.source.path);
    if (attributes && (*attributes & AttributeFolder) != 0) {
        return "it is a folder";
    }
    const std::unique_ptr<LargeFileAccess> file = disk.MakeLargeFile();
    file->Open(plan.source.path);
    plan.file = file->Identity();
    return plan.file.size == 0 ? "it is empty: there is nothing to split" : std::string();
}

SplitPlan PlanSplit(const std::string& typed, const SplitOptions& options, const Workplace& place) {
    SplitPlan plan;
    plan.source.shown = typed;
    const std::variant<UserPath, BadPath> path = place.paths.Of(typed);
    if (const auto* reason = std::get_if<BadPath>(&path)) {
        plan.refusal = *reason;
        return plan;
    }
    plan.source = std::get<UserPath>(path);
    plan.folder = UserPaths::FolderOf(plan.source);
    if (!options.folder.empty()) {
        const std::variant<UserFolder, BadPath> folder = place.paths.Folder(options.folder);
        if (const auto* reason = std::get_if<BadPath>(&folder)) {
            plan.refusal = options.folder + ": " + *reason;
            return plan;
        }
        plan.folder = std::get<UserFolder>(folder);
    }
    const std::string name = plan.source.Name();
    plan.stem = options.level ? ArchiveName(name) : name;
    try {
        plan.refusal = RefuseSource(plan, place.Disk());
    } catch (const RuntimeError& error) {
        // A pipe or a device is there, and is no file of bytes.
        const bool isNone = error.Number() == ErrorNumber::PathFileAccessError;
        plan.refusal = isNone ? "it is no ordinary file" : error.what();
    }
    if (plan.refusal.empty()) {
        const double count = CountOfParts(options, static_cast<double>(plan.file.size));
        plan.refusal = RefuseNames(plan, count, place.Disk());
    }
    return plan;
}

bool HaveOneFolder(const SplitPlan& one, const SplitPlan& other, FileSystem& disk) {
    return one.folder.path == other.folder.path ||
           disk.IsSameFile(one.folder.path, other.folder.path);
}

// Letter case does not count: a folder that ignores it would make one name of two.
void RefuseNamesakes(std::vector<SplitPlan>& plans, FileSystem& disk) {
    std::map<std::string, std::vector<SplitPlan*>> byName;
    for (SplitPlan& plan : plans) {
        byName[UpperCase(plan.stem)].push_back(&plan);
    }
    for (const auto& [name, namesakes] : byName) {
        for (SplitPlan* const plan : namesakes) {
            const auto other = std::ranges::find_if(namesakes, [&](const SplitPlan* namesake) {
                return namesake != plan && HaveOneFolder(*namesake, *plan, disk);
            });
            if (!name.empty() && other != namesakes.end()) {
                plan->refusal =
                    "its parts would have the names of those of " + (*other)->source.shown;
            }
        }
    }
}

// A folder that ignores letter case has the older name under the new spelling, too.
bool WouldBeReplaced(const std::string& name, const SplitPlan& plan, FileSystem& disk) {
    const std::string spelled = plan.stem + name.substr(std::min(name.rfind('_'), name.size()));
    return BelongsToSet(name, plan.stem) &&
           (name == spelled || disk.HasExactName(plan.folder.path + spelled));
}

// The script of a part that is split again is called like that of the whole set.
std::string RefuseOtherSet(const SplitPlan& plan, const Workplace& place) {
    for (const std::string_view ending : {ScriptEnding, ChecksumEnding}) {
        const std::string path =
            PathBesideParts(FunctionLastPathItem(plan.firstPart), plan.folder.path, ending);
        const std::string name(FunctionLastPathItem(path));
        if (!BelongsToSet(name, plan.stem) && place.Disk().HasExactName(path)) {
            return "it would replace " + plan.folder.At(name).shown + " of another set";
        }
    }
    return {};
}

bool IsAnyOf(const FileIdentity& file, const std::vector<SplitPlan>& plans) {
    return std::ranges::any_of(
        plans, [&file](const SplitPlan& plan) { return plan.file.IsSameFile(file); });
}

}  // namespace

std::vector<SplitPlan> PlanSplits(const SplitOptions& options, const Workplace& place) {
    std::vector<SplitPlan> plans;
    for (const std::string& file : options.files) {
        plans.push_back(PlanSplit(file, options, place));
    }
    RefuseNamesakes(plans, place.Disk());
    return plans;
}

std::string LookBeforeSplit(SplitPlan& plan, const std::vector<SplitPlan>& plans,
                            const SplitOptions& options, const Workplace& place) {
    double freed = 0;
    std::vector<std::string> names;
    try {
        names = place.Disk().ListFolder(plan.folder.path);
    } catch (const RuntimeError& error) {
        const std::string folder = plan.folder.shown.empty() ? "./" : plan.folder.shown;
        return folder + " cannot be read: " + error.what();
    }
    for (const std::string& name : names) {
        if (!WouldBeReplaced(name, plan, place.Disk())) {
            continue;
        }
        const std::optional<FileIdentity> file = place.Disk().Identity(plan.folder.path + name);
        const std::string shown = plan.folder.At(name).shown;
        if (!options.force) {
            return "there is such a set, with " + shown + "; --force replaces it";
        }
        if (file && IsAnyOf(*file, plans)) {
            return "the older set to be replaced has " + shown + ", which is to be split";
        }
        plan.older.push_back(name);
        freed += file ? static_cast<double>(file->size) : 0;
    }
    if (std::string refusal = RefuseOtherSet(plan, place); !refusal.empty()) {
        return refusal;
    }
    const auto needed = static_cast<double>(plan.file.size) - freed;
    return options.level ? std::string() : place.LacksRoom(plan.folder, needed);
}

std::string ArchiveName(std::string_view name) {
    return std::string(name).append(".zip");
}

bool BelongsToSet(std::string_view name, std::string_view stem) {
    for (const std::string_view ending : {ScriptEnding, ChecksumEnding}) {
        if (name.ends_with(ending)) {
            const std::string_view part = name.substr(0, name.size() - ending.size());
            return BelongsToSet(part, stem) &&
                   PartDigits(part).find_first_not_of('0') == std::string_view::npos;
        }
    }
    return IsPartOf(name, stem) && !PartDigits(name).empty();
}

}  // namespace zarn
