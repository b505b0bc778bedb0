#pragma once

#include <memory>

#include "platform/linux/LinuxPlatform.h"
#include "settings/SharedObjects.h"
#include "support/RecordingBoxes.h"
#include "support/TestFolder.h"

namespace zarn::testing {

/// The user's folders inside a test's own folder.
[[nodiscard]] inline UserFolders FoldersIn(const TestFolder& folder) {
    return {folder.System("config"), folder.System("cache"), {}};
}

/// The real platform with its settings in a folder of its own and recorded boxes. A test may
/// replace parts of `platform` before it moves it into `SharedObjects`.
struct TestPlatform {
    TestFolder home;
    Platform platform = MakeLinuxPlatform(FoldersIn(home));
    RecordingBoxes* boxes = nullptr;

    TestPlatform() {
        auto recording = std::make_unique<RecordingBoxes>();
        boxes = recording.get();
        platform.messageBoxes = std::move(recording);
    }
};

}  // namespace zarn::testing
