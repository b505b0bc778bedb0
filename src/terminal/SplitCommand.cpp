#include "terminal/SplitCommand.h"

#include <algorithm>
#include <chrono>
#include <memory>

#include "engine/SplitRunner.h"
#include "join/FileCopier.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"
#include "scripts/SfvReader.h"
#include "terminal/ReadBack.h"
#include "terminal/Sizes.h"
#include "terminal/SplitPlan.h"

namespace zarn {

namespace {

/// Shows a job's stages.
class ShownStages : public SplitterEvents {
  public:
    ShownStages(Console& console, double bytes) : console_(console), bytes_(bytes) {}

    void StageBegins(SplitStage stage) override {
        switch (stage) {
            case SplitStage::Compressing:
                return console_.BeginStage("compressing", bytes_);
            case SplitStage::Segmenting:
                return console_.BeginStage("splitting", bytes_);
            case SplitStage::Checksums:
                return console_.BeginStage("checksums", bytes_);
            default:
                return console_.EndStage();
        }
    }
    void StatusZIP(std::int32_t percent) override { Advance(percent); }
    void StatusSplitt(std::int32_t percent, std::int32_t /*currentPart*/,
                      std::int32_t /*totalParts*/, double /*startTime*/) override {
        Advance(percent);
    }
    void StatusSFV(std::int32_t part, std::int32_t totalParts) override {
        constexpr double Hundred = 100;
        Advance(totalParts > 0 ? Hundred * (part - 1) / totalParts : 0);
    }
    // A volume whose media can be changed has become full: another one is not asked for here.
    void RemovableMedia(std::string& /*partPath*/, double& /*partNumber*/, double& /*totalParts*/,
                        double& /*partSize*/) override {
        lacksRoom = true;
        engine->CancelRequested(true);
    }

    SplitterEngine* engine = nullptr;
    bool lacksRoom = false;

  private:
    void Advance(double percent) {
        constexpr double Hundred = 100;
        console_.Advance(bytes_ * percent / Hundred);
    }

    Console& console_;
    double bytes_;
};

/// One job of `zarn split`.
class FileSplit : private FixedChoices {
  public:
    FileSplit(SplitPlan& plan, const SplitOptions& options, const std::string& password,
              const Workplace& place)
        : plan_(plan),
          options_(options),
          place_(place),
          disk_(place.Disk()),
          stages_(place.console, static_cast<double>(plan.file.size)),
          runner_(place.shared, nobodySees_, *this, stages_) {
        archivePassword = password;
        deletesParts = options.deleteParts;
        stages_.engine = &runner_.Engine();
    }

    /// What a job that failed has made is deleted. Raises file errors.
    bool Run();

  private:
    [[nodiscard]] SplitJob Order() const;
    [[nodiscard]] bool Split();
    [[nodiscard]] std::string ArchivePath(std::string_view source,
                                          std::string_view folder) override;
    [[nodiscard]] bool DeletesSourceAtEnd(const SplitJob& job, bool complete) override;
    [[nodiscard]] bool PartsHoldSource();
    [[nodiscard]] bool PartsHoldArchive(const std::vector<std::string>& parts);
    [[nodiscard]] bool ArchiveHoldsSource(const std::string& archive);
    [[nodiscard]] std::string WhyFailed();  ///< empty: of a signal, which is told elsewhere
    void DeleteOlderSet();
    void CollectParts();
    [[nodiscard]] bool HasAllChecksums();
    void TellResult(double seconds);
    bool Fail(std::string_view reason);

    SplitPlan& plan_;
    const SplitOptions& options_;
    const Workplace& place_;
    FileSystem& disk_;
    SharedProgress nobodySees_;
    ShownStages stages_;
    SplitRunner runner_;
    std::vector<std::string> parts_;  ///< names
    double bytes_ = 0;                ///< of all parts
    std::optional<ErrorNumber> error_;
    bool hasAllChecksums_ = false;  ///< or needs none
    bool isDone_ = true;            ///< nothing was left undone that was asked for
};

bool FileSplit::Run() {
    const auto begun = std::chrono::steady_clock::now();
    DeleteOlderSet();
    if (!Split()) {
        runner_.RemoveOutput();
        const std::string reason = WhyFailed();
        return !reason.empty() && Fail(reason);
    }
    for (const std::string& reason : place_.messages.TakeReasons()) {
        isDone_ = Fail("it was not deleted: " + reason);
    }
    if (options_.deleteSource && isDone_ && disk_.HasExactName(plan_.source.path)) {
        isDone_ = Fail("it cannot be deleted");
    }
    CollectParts();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
    TellResult(taken.count());
    return isDone_;
}

// Behind a split that failed the checksums may fail as well, which is not the reason then.
bool FileSplit::Split() {
    if (options_.level) {
        temporaryFolder = disk_.TemporaryFolder();
    }
    SplitJob job = Order();
    bool isComplete = false;
    try {
        isComplete = runner_.Run(job) && hasAllChecksums_;
    } catch (const RuntimeError& error) {
        error_ = error.Number();
    }
    place_.console.EndStage();
    return isComplete;
}

SplitJob FileSplit::Order() const {
    SplitJob job;
    job.source = plan_.source.path;
    job.destination = plan_.folder.path;
    job.partSize = static_cast<double>(options_.size.value_or(0));
    job.partsCount = options_.count;
    job.criterion = options_.size ? SizeCriterion : PartsCriterion;
    job.compress = options_.level.has_value();
    job.compressionLevel = options_.level.value_or(0);
    job.deleteSource = options_.deleteSource;
    job.sfv = options_.sfv;
    return job;
}

// Its remains would otherwise be joined with the new parts.
void FileSplit::DeleteOlderSet() {
    for (const std::string& name : plan_.older) {
        const std::string path = plan_.folder.path + name;
        const std::optional<FileIdentity> file = disk_.Identity(path);
        if (!file || disk_.DeleteSameFile(path, *file) != Deletion::Done) {
            throw RuntimeError(ErrorNumber::PathFileAccessError);
        }
    }
}

std::string FileSplit::ArchivePath(std::string_view source, std::string_view folder) {
    return std::string(folder) + ArchiveName(FunctionLastPathItem(source));
}

bool FileSplit::DeletesSourceAtEnd(const SplitJob& job, bool complete) {
    hasAllChecksums_ = complete && HasAllChecksums();
    if (!hasAllChecksums_ || !job.deleteSource) {
        return false;
    }
    const bool isSafe = PartsHoldSource();
    if (!isSafe && !place_.EndingSignals().IsHeld()) {
        isDone_ = Fail("it was not deleted: its parts " +
                       (error_ ? "cannot be compared with it: " + std::string(ErrorText(*error_))
                               : "are not equal to it"));
    }
    return isSafe;
}

bool FileSplit::PartsHoldSource() {
    CollectParts();
    std::vector<std::string> paths;
    for (const std::string& part : parts_) {
        paths.push_back(plan_.folder.path + part);
    }
    if (options_.level) {
        return PartsHoldArchive(paths);
    }
    double done = 0;
    place_.console.BeginStage("comparing", bytes_);
    const bool areSame = HaveSameBytes(disk_, plan_.source.path, paths, [&](std::size_t bytes) {
        done += static_cast<double>(bytes);
        place_.console.Advance(done);
        return !place_.EndingSignals().IsHeld();
    });
    place_.console.EndStage();
    return areSame;
}

// The archive that was cut has been deleted by now, so the parts are joined to one once more.
bool FileSplit::PartsHoldArchive(const std::vector<std::string>& parts) {
    const std::string folder = disk_.MakeUniqueFolder(temporaryFolder);
    const std::string archive = folder + "archive.zip";
    const std::unique_ptr<LargeFileAccess> file = disk_.MakeLargeFile();
    bool holds = false;
    try {
        FileCopier copier(disk_, place_.EndingSignals());
        file->Create(archive);
        for (const std::string& part : parts) {
            copier.CopyWhole(part, *file);
        }
        file->Close();
        holds = ArchiveHoldsSource(archive);
    } catch (const RuntimeError& error) {
        error_ = error.Number();
    }
    disk_.DeleteFile(archive);
    disk_.RemoveFolder(folder);
    return holds;
}

bool FileSplit::ArchiveHoldsSource(const std::string& archive) {
    const auto bytes = static_cast<double>(plan_.file.size);
    place_.console.BeginStage("comparing", bytes);
    ZipOrder order;
    order.archive = archive;
    order.source = plan_.source.path;
    order.password = archivePassword;
    ZipListener listener;
    listener.percentDone = [this, bytes](std::int32_t percent) {
        constexpr double Hundred = 100;
        place_.console.Advance(bytes * percent / Hundred);
    };
    listener.cancelled = [this] { return place_.EndingSignals().IsHeld(); };
    const bool holds = place_.shared.Platform().zipWriter->Holds(order, listener);
    place_.console.EndStage();
    return holds;
}

void FileSplit::CollectParts() {
    parts_.clear();
    bytes_ = 0;
    const SplitterEngine& engine = runner_.Engine();
    for (std::int32_t index = 1; index < engine.ItemsFilesMatrixPath(); ++index) {
        parts_.push_back(engine.tabFilesMatrix(index));
        bytes_ += disk_.FileSize(engine.tabFilesMatrixPath(index));
    }
}

// A part that could not be read has an error in the place of its checksum.
bool FileSplit::HasAllChecksums() {
    if (!options_.sfv) {
        return true;
    }
    const SplitterEngine& engine = runner_.Engine();
    const std::string path =
        PathBesideParts(engine.tabFilesMatrix(1), engine.SFVDestinationFile(), ChecksumEnding);
    const auto lines = ReadSfv(disk_.ReadFile(path, LargestSfv));
    return lines && std::ranges::all_of(
                        *lines, [](const SfvLine& line) { return line.checksum.has_value(); });
}

std::string FileSplit::WhyFailed() {
    const std::vector<std::string> reasons = place_.messages.TakeReasons();
    if (place_.EndingSignals().IsHeld()) {
        return {};
    }
    if (stages_.lacksRoom) {
        return "there is too little room for its parts";
    }
    const std::optional<ErrorNumber> failure = runner_.Engine().Failure();
    const std::optional<ErrorNumber> error = failure ? failure : error_;
    if (error && options_.level && failure == ErrorNumber::FileNotFound) {
        return "its ZIP cannot be written in the temporary folder";
    }
    const std::string folder = plan_.folder.shown.empty() ? "./" : plan_.folder.shown;
    return "it cannot be split into " + folder + ": " +
           (error ? ErrorText(*error) : "its parts cannot be read");
}

void FileSplit::TellResult(double seconds) {
    const SplitterEngine& engine = runner_.Engine();
    Console& console = place_.console;
    for (const std::string& part : parts_) {
        console.Line(plan_.folder.At(part).shown);
    }
    const auto beside = [&](std::string_view ending) {
        const std::string path =
            PathBesideParts(engine.tabFilesMatrix(1), engine.SFVDestinationFile(), ending);
        return plan_.folder.At(FunctionLastPathItem(path)).shown;
    };
    console.Line(beside(ScriptEnding));
    if (options_.sfv) {
        console.Line(beside(ChecksumEnding));
    }
    console.Summary(CountText(parts_.size(), "part") + ", " + SizeText(bytes_) + ", " +
                    TimeText(seconds) + " -> " + beside(ScriptEnding));
}

bool FileSplit::Fail(std::string_view reason) {
    place_.console.Tell(plan_.source.shown, reason);
    return false;
}

/// The password of all archives of a run; nothing where there should be one.
std::optional<std::string> AskPassword(const Workplace& place) {
    auto first = place.terminal.AskSecret("Password: ", place.EndingSignals());
    const auto second = first ? place.terminal.AskSecret("Once more: ", place.EndingSignals())
                              : std::optional<std::string>();
    if (place.EndingSignals().IsHeld()) {
        return std::nullopt;
    }
    if (!second) {
        place.console.Tell("there is no terminal to ask for a password; --password-file reads one");
        return std::nullopt;
    }
    if (first != second) {
        place.console.Tell("the two passwords differ");
        return std::nullopt;
    }
    return first;
}

std::optional<std::string> ReadPassword(const std::string& file, const Workplace& place) {
    const auto secret = place.terminal.ReadSecret(file);
    if (!secret) {
        place.console.Tell(file, "the password cannot be read");
        return std::nullopt;
    }
    if (secret->isExposed) {
        place.console.Tell(file, "warning: other users can read this password");
    }
    return secret->text;
}

std::optional<std::string> PasswordFor(const SplitOptions& options, const Workplace& place) {
    if (!options.askPassword && options.passwordFile.empty()) {
        return std::string();
    }
    std::optional<std::string> password =
        options.askPassword ? AskPassword(place) : ReadPassword(options.passwordFile, place);
    if (password && password->empty()) {
        place.console.Tell("an empty password protects nothing");
        return std::nullopt;
    }
    return password;
}

bool SplitOne(SplitPlan& plan, const std::vector<SplitPlan>& plans, const SplitOptions& options,
              const std::string& password, const Workplace& place) {
    try {
        if (plan.refusal.empty()) {
            plan.refusal = LookBeforeSplit(plan, plans, options, place);
        }
        if (!plan.refusal.empty()) {
            place.console.Tell(plan.source.shown, plan.refusal);
            return false;
        }
        return FileSplit(plan, options, password, place).Run();
    } catch (const RuntimeError& error) {
        place.console.Tell(plan.source.shown, error.what());
        return false;
    }
}

}  // namespace

bool RunSplit(const SplitOptions& options, const Workplace& place) {
    const std::optional<std::string> password = PasswordFor(options, place);
    if (!password) {
        return false;
    }
    std::vector<SplitPlan> plans = PlanSplits(options, place);
    bool isDone = true;
    for (SplitPlan& plan : plans) {
        if (place.EndingSignals().IsHeld()) {
            return false;
        }
        isDone = SplitOne(plan, plans, options, *password, place) && isDone;
    }
    return isDone;
}

}  // namespace zarn
