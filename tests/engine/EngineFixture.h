#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/SplitterEngine.h"
#include "runtime/RuntimeError.h"
#include "support/ForwardingFileSystem.h"
#include "support/ForwardingLargeFile.h"
#include "support/TestFolder.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

/// Keeps every event as a text, and lets a test act in it.
class RecordingEvents : public SplitterEvents {
  public:
    void StartSplitt() override { log.emplace_back("start"); }
    void StatusSplitt(std::int32_t percent, std::int32_t part, std::int32_t total,
                      double /*startTime*/) override {
        log.push_back(std::to_string(percent) + "% " + std::to_string(part) + "/" +
                      std::to_string(total));
        if (whenStatus) {
            whenStatus(percent);
        }
    }
    void SplitterFinish() override { log.emplace_back("finish"); }
    void RemovableMedia(std::string& path, double& number, double& total, double& size) override {
        log.push_back("medium " + std::to_string(static_cast<int>(number)) + "/" +
                      std::to_string(static_cast<int>(total)) + " " +
                      std::to_string(static_cast<int>(size)) + " " +
                      path.substr(path.rfind('\\') + 1));
        whenMedium(static_cast<int>(number));
    }

    std::vector<std::string> log;
    std::function<void(int percent)> whenStatus;
    std::function<void(int number)> whenMedium = [](int) {};
};

class RecordingQueue : public MessageQueue {
  public:
    void Run() override { whenRun(); }
    void Wait(std::chrono::milliseconds time) override { waited += time; }

    std::function<void()> whenRun = [] {};
    std::chrono::milliseconds waited{0};
};

/// Makes every file of the real file system into one of a test's own.
class WrappingFileSystem : public ForwardingFileSystem {
  public:
    using Maker = std::function<std::unique_ptr<LargeFileAccess>(std::unique_ptr<LargeFileAccess>)>;

    WrappingFileSystem(std::unique_ptr<FileSystem> real, Maker maker)
        : ForwardingFileSystem(std::move(real)), maker_(std::move(maker)) {}
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override {
        return maker_(ForwardingFileSystem::MakeLargeFile());
    }

  private:
    Maker maker_;
};

/// A folder for the source, an empty one for its parts. A test replaces parts of `test.platform`
/// before the first call of `Engine`.
class EngineTest : public ::testing::Test {
  protected:
    EngineTest() {
        auto messageQueue = std::make_unique<RecordingQueue>();
        queue = messageQueue.get();
        test.platform.messageQueue = std::move(messageQueue);
    }

    void WrapFiles(WrappingFileSystem::Maker maker) {
        test.platform.fileSystem = std::make_unique<WrappingFileSystem>(
            std::move(test.platform.fileSystem), std::move(maker));
    }

    SharedObjects& Shared() {
        if (!shared_) {
            shared_ = std::make_unique<SharedObjects>(std::move(test.platform));
        }
        return *shared_;
    }

    SplitterEngine& Engine() {
        if (!engine_) {
            engine_ = std::make_unique<SplitterEngine>(Shared(), progress, events);
        }
        return *engine_;
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
    std::unique_ptr<SharedObjects> shared_;
    std::unique_ptr<SplitterEngine> engine_;
};

}  // namespace zarn::testing
