#pragma once

#include <string_view>

namespace zarn {

/// What a page asks of the window around it.
class PageFrame {
  public:
    PageFrame() = default;
    PageFrame(const PageFrame&) = delete;
    PageFrame& operator=(const PageFrame&) = delete;
    virtual ~PageFrame() = default;

    /// Switches to the page of a key, or opens what stands behind it; see `FrmMain::ShowPage`.
    virtual void ShowPage(std::string_view key) = 0;

    /// Shows the preferences with their tab "COMPRESSION".
    virtual void ShowCompressionSettings() = 0;

    /// Puts the join page into its empty state.
    virtual void ResetJoinPage() = 0;

    /// Puts the stored priority into its slider.
    virtual void LoadPriority() = 0;

    /// Shows the help on the command line and returns when it has closed.
    virtual void ShowCommandLineHelp() = 0;

    /// Writes the status line; a blank text reads "Ready".
    virtual void SetStatusText(std::string_view text) = 0;

    /// Gives the window its title at rest.
    virtual void SetTitle() = 0;
};

}  // namespace zarn
