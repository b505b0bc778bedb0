#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/FileIdentity.h"
#include "runtime/RuntimeError.h"
#include "terminal/Workplace.h"

namespace zarn {

/// A file to be read.
struct ChecksumTask {
    std::string path;
    std::uint32_t checksum = 0;        ///< the result,
    FileIdentity file;                 ///< and the file as it was opened;
    std::optional<ErrorNumber> error;  ///< why there is none
};

/// How files are read: each for itself, by as many processors as help, or one behind the other, so
/// that each checksum is that of all files up to there.
enum class Reading { Apart, Together };

/// Reads files and computes their CRC-32 while the stage's progress is shown. `bytes` is the size
/// of all. False if a signal ended it.
[[nodiscard]] bool ComputeChecksums(std::span<ChecksumTask> tasks, Reading reading, double bytes,
                                    std::string_view stage, const Workplace& place);

}  // namespace zarn
