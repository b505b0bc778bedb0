#pragma once

#include "engine/SplitterEngine.h"
#include "support/TestPlatform.h"
#include "support/WatchedFileSystem.h"

namespace zarn::testing {

/// Keeps every event as a text, and lets a test act in it.
class RecordingEvents : public SplitterEvents {
  public:
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

    Names log;
    std::function<void(const std::string& event)> then = [](const std::string& /*event*/) {};

  private:
    void Keep(const std::string& event) {
        log.push_back(event);
        then(event);
    }
};

/// A folder for the source, an empty one for its parts. A test replaces parts of `test.platform`
/// before the first call of `Engine`.
class EngineTest : public ::testing::Test {
  protected:
    SplitterEngine& Engine() {
        return engine_ ? *engine_ : engine_.emplace(test.Shared(), progress, events);
    }

    bool Split(double partSize, const std::string& criterion = "Size", int count = 0,
               bool compressed = false) {
        usedPartSize = partSize;
        return Engine().SplittFile(source, destination, usedPartSize, compressed, false, criterion,
                                   count, false);
    }

    TestFolder folder;
    TestFolder out;
    std::string source = folder.Drive("movie.avi");
    std::string destination = out.Drive() + "\\";
    TestPlatform test;
    TestQueue& queue = test.Queue();
    SharedProgress progress;
    RecordingEvents events;
    double usedPartSize = 0;

  private:
    std::optional<SplitterEngine> engine_;
};

}  // namespace zarn::testing
