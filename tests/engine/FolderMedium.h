#pragma once

#include "support/TestPlatform.h"

namespace zarn::testing {

/// A folder, absolute for the operating system, as every volume there is: a removable medium of
/// `capacity` bytes.
struct FolderMedium {
    FolderMedium(TestVolumes& volumes, const std::string& folder, double size) : capacity(size) {
        volumes.find = [this, folder](std::string_view /*root*/) {
            double free = capacity;
            for (const auto& entry : fs::directory_iterator(folder)) {
                free -= static_cast<double>(entry.file_size());
            }
            lowest = std::min(lowest, free);
            return VolumeWith(DriveType::Removable, free, capacity);
        };
    }

    double capacity;
    double lowest = 0;  ///< below 0 once it held more than it can
};

}  // namespace zarn::testing
