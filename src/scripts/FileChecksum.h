#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace zarn {

/// A CRC as text: upper-case hexadecimal without leading zeros, "0" for zero. `value`, a whole
/// number from 0 to 4294967295, is used up: it is 0 afterwards.
[[nodiscard]] std::string FormatCRCHex(double& value);

/// The CRC text of a file for its line in a checksum file. Never raises: where the file cannot be
/// read it is the error's number and " ERROR ".
[[nodiscard]] std::string CalcCRC32(FileSystem& fileSystem, const std::string& fileName);

}  // namespace zarn
