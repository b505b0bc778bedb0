#pragma once

#include <string_view>

namespace zarn {

/// What the preferences page asks of the window around it.
class PreferencesFrame {
  public:
    PreferencesFrame() = default;
    PreferencesFrame(const PreferencesFrame&) = delete;
    PreferencesFrame& operator=(const PreferencesFrame&) = delete;
    virtual ~PreferencesFrame() = default;

    /// Clears `ChkCompress` and stores that, without its question about the level; nothing where
    /// the box is clear already. A question that led here is forgotten with it.
    virtual void UntickCompress() = 0;

    /// Shows type and free space of a path's drive in the destination panel, whose capacity and
    /// colours stay as they are.
    virtual void ShowDestinationUnit(std::string_view path) = 0;

    /// Shows the split page with its heading if the question of `ChkCompress` led here, once.
    virtual void ReturnToPrompt() = 0;

    /// Brings what the window says about itself up to date.
    virtual void UpdateSummary() = 0;
};

}  // namespace zarn
