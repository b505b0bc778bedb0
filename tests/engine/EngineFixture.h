#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/SplitterEngine.h"
#include "support/TestPlatform.h"
#include "support/WatchedFileSystem.h"

namespace zarn::testing {

using Names = std::vector<std::string>;

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

class RecordingQueue : public MessageQueue {
  public:
    void Run() override { whenRun(); }
    void Wait(std::chrono::milliseconds time) override { waited += time; }

    std::function<void()> whenRun = [] {};
    std::chrono::milliseconds waited{0};
};

/// A folder for the source, an empty one for its parts. A test replaces parts of `test.platform`
/// before the first call of `Shared` or `Engine`.
class EngineTest : public ::testing::Test {
  protected:
    EngineTest() {
        auto messageQueue = std::make_unique<RecordingQueue>();
        queue = messageQueue.get();
        test.platform.messageQueue = std::move(messageQueue);
    }

    WatchedFileSystem& Watch() {
        auto watched = std::make_unique<WatchedFileSystem>(std::move(test.platform.fileSystem));
        WatchedFileSystem& watch = *watched;
        test.platform.fileSystem = std::move(watched);
        return watch;
    }

    SharedObjects& Shared() {
        return shared_ ? *shared_ : shared_.emplace(std::move(test.platform));
    }
    SplitterEngine& Engine() {
        return engine_ ? *engine_ : engine_.emplace(Shared(), progress, events);
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
    RecordingQueue* queue = nullptr;
    SharedProgress progress;
    RecordingEvents events;
    double usedPartSize = 0;

  private:
    std::optional<SharedObjects> shared_;
    std::optional<SplitterEngine> engine_;
};

}  // namespace zarn::testing
