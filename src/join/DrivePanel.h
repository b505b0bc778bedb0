#pragma once

#include <string_view>

namespace zarn {

/// The window's one panel about a drive: its type, its free space, its capacity. The split page
/// shows it; the join page writes to it.
class DrivePanel {
  public:
    DrivePanel() = default;
    DrivePanel(const DrivePanel&) = delete;
    DrivePanel& operator=(const DrivePanel&) = delete;
    virtual ~DrivePanel() = default;

    /// Fills the panel for the drive of a path; the free space is red where it reads "Media not
    /// Ready", else black.
    virtual void ShowDrive(std::string_view path) = 0;

    virtual void BlackenFreeSpace() = 0;
};

}  // namespace zarn
