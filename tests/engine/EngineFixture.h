#pragma once

#include "engine/SplitRunner.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

/// Keeps every event as a text, and lets a test act in it.
class RecordingEvents : public SplitterEvents {
  public:
    void StageBegins(SplitStage stage) override {
        constexpr std::array StageNames = {"begin", "compress", "split", "sums", "done"};
        Keep(StageNames.at(static_cast<std::size_t>(stage)));
    }
    void StatusSFV(std::int32_t part, std::int32_t total) override {
        Keep("sum " + std::to_string(part) + "/" + std::to_string(total));
    }
    bool HeardCancel() override { return heardCancel; }
    void StartSplitt() override { Keep("start"); }
    void StatusSplitt(std::int32_t percent, std::int32_t part, std::int32_t total,
                      double /*startTime*/) override {
        Keep(std::to_string(percent) + "% " + std::to_string(part) + "/" + std::to_string(total));
    }
    void SplitterFinish() override { Keep("finish"); }
    void RemovableMedia(std::string& path, double& number, double& total, double& size) override {
        Keep("medium " + std::to_string(static_cast<int>(number)) + "/" +
             std::to_string(static_cast<int>(total)) + " " +
             std::to_string(static_cast<int>(size)) + " " + path.substr(path.rfind('\\') + 1));
    }
    void StatusZIP(std::int32_t percent) override { Keep("zip " + std::to_string(percent)); }

    Names log;
    bool heardCancel = false;
    std::function<void(const std::string&)> then = [](const std::string& /*event*/) {};

  private:
    void Keep(const std::string& event) {
        log.push_back(event);
        then(event);
    }
};

struct HeldSignal : public Signals {
    void Hold() override {}
    bool IsHeld() override { return held; }
    void Deliver() override {}

    bool held = false;
};

/// A test replaces parts of `test.platform` before the first call of `Engine`.
class EngineTest : public ::testing::Test {
  protected:
    /// One for all jobs of a test, or for those until `runner` is reset.
    SplitRunner& Runner() {
        return runner ? *runner
                      : runner.emplace(test.Shared(), progress, choices.emplace(test.Shared()),
                                       events);
    }
    SplitterEngine& Engine() { return Runner().Engine(); }
    Parameters& Settings() { return test.Settings(); }
    bool Split(double partSize, const std::string& criterion = "Size", int count = 0,
               bool compressed = false) {
        SplitJob job = {.source = source,
                        .destination = destination,
                        .partSize = partSize,
                        .partsCount = count,
                        .compress = compressed,
                        .criterion = criterion};
        const bool complete = Engine().SplittFile(source, job);
        usedPartSize = job.partSize;
        return complete;
    }

    TestFolder folder;
    TestFolder out;
    TestFolder temporary;  ///< for an archive
    std::string source = folder.Drive("movie.avi");
    std::string destination = out.Drive() + "\\";
    TestPlatform test;
    TestQueue& queue = test.Queue();
    TestVolumes& volumes = test.Volumes();
    SharedProgress progress;
    RecordingEvents events;
    std::optional<StoredChoices> choices;
    double usedPartSize = 0;
    std::optional<SplitRunner> runner;
};

/// A folder, absolute for the operating system, as every volume there is: a removable medium of
/// `capacity` bytes.
struct FolderMedium {
    FolderMedium(TestVolumes& volumes, const std::string& folder, double size) : capacity(size) {
        volumes.find = [this, folder](std::string_view /*root*/) {
            double free = capacity;
            for (const auto& entry : fs::directory_iterator(folder)) {
                free -= static_cast<double>(entry.file_size());
            }
            return VolumeWith(DriveType::Removable, free, capacity);
        };
    }

    double capacity;
};

}  // namespace zarn::testing
