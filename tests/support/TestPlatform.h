#pragma once

#include "platform/linux/LinuxPlatform.h"
#include "settings/SharedObjects.h"
#include "support/Prelude.h"
#include "support/RecordingBoxes.h"
#include "support/TestVolumes.h"
#include "support/WatchedFileSystem.h"

namespace zarn::testing {

/// The user's folders inside a test's own folder.
[[nodiscard]] inline UserFolders FoldersIn(const TestFolder& folder) {
    return {folder.System("config"), folder.System("cache"), {}};
}

/// Stands still, or goes `step` seconds on with every look at `Timer`.
struct TestClock : Clock {
    DateTime Now() override { return now; }
    double Timer() override { return time += step; }

    DateTime now{2007, 3, 14, 21, 5, 7};
    double time = 0;
    double step = 0;
};

/// Acts where a job lets events run, and adds up how long it waits. A queue behind it, if there is
/// one, runs the events.
struct TestQueue : MessageQueue {
    explicit TestQueue(std::unique_ptr<MessageQueue> queue) : real(std::move(queue)) {}

    void Run() override {
        whenRun();
        if (real) {
            real->Run();
        }
    }
    void Wait(std::chrono::milliseconds time) override {
        waited += time;
        whenWaiting();
        if (real) {
            Run();
        }
    }

    std::function<void()> whenRun = [] {};
    std::function<void()> whenWaiting = [] {};
    std::chrono::milliseconds waited{0};
    std::unique_ptr<MessageQueue> real;
};

/// The real platform with its settings in a folder of its own and recorded boxes. A test puts other
/// parts into `platform` before the first call of `Shared`.
struct TestPlatform {
    TestPlatform() : boxes(&Put(platform.messageBoxes, std::make_unique<RecordingBoxes>())) {}

    template <typename Kind, typename Part>
    static Part& Put(std::unique_ptr<Kind>& place, std::unique_ptr<Part> part) {
        Part& put = *part;
        place = std::move(part);
        return put;
    }
    WatchedFileSystem& Watch() {
        return Put(platform.fileSystem,
                   std::make_unique<WatchedFileSystem>(std::move(platform.fileSystem)));
    }
    TestVolumes& Volumes() {
        return Put(platform.volumes, std::make_unique<TestVolumes>(FoldersIn(home).configuration));
    }
    TestClock& Clock() { return Put(platform.clock, std::make_unique<TestClock>()); }
    TestQueue& Queue(std::unique_ptr<MessageQueue> real = nullptr) {
        return Put(platform.messageQueue, std::make_unique<TestQueue>(std::move(real)));
    }

    SharedObjects& Shared() { return shared_ ? *shared_ : shared_.emplace(std::move(platform)); }
    Parameters& Settings() { return Shared().Parameters(); }

    TestFolder home;
    Platform platform = MakeLinuxPlatform(FoldersIn(home));
    RecordingBoxes* boxes;

  private:
    std::optional<SharedObjects> shared_;
};

}  // namespace zarn::testing
