#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "controls/GuardedApplication.h"
#include "settings/SharedObjects.h"

namespace zarn {

/// The toolkit's application of a program run, with its looks. While it lives, boxes are windows
/// and the message queue is the toolkit's; then those that were there before come back.
class WindowApplication {
  public:
    /// Where no window can be opened `noDisplay` is called with the reason and must not return.
    /// Until then the toolkit says nothing on standard error by itself.
    using NoDisplay = std::function<void(const std::string& reason)>;

    /// `shared` must outlive this object. What it has made is dropped here and at the end.
    WindowApplication(SharedObjects& shared, const NoDisplay& noDisplay);
    WindowApplication(const WindowApplication&) = delete;
    WindowApplication& operator=(const WindowApplication&) = delete;
    ~WindowApplication();

    /// Runs until the last window has closed. Raises what a handler raised, which ends the run.
    static void Exec();

  private:
    void SwapFrontEnds();

    SharedObjects& shared_;
    std::string name_ = "ZarnFileSplitter";
    int count_ = 1;
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    std::unique_ptr<GuardedApplication> application_;
    std::unique_ptr<MessageBoxes> otherBoxes_;
    std::unique_ptr<MessageQueue> otherQueue_;
};

}  // namespace zarn
