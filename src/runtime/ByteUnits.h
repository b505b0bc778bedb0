#pragma once

namespace zarn {

/// Sizes are told in powers of two throughout. Doubles, like the sizes that they divide; dividing
/// by a power of two loses nothing.
inline constexpr double BytesInKilobyte = 1024;
inline constexpr double BytesInMegabyte = 1048576;
inline constexpr double BytesInGigabyte = 1073741824;

/// A part that goes on a diskette, a little less than the 1.44 MB by which it is called.
inline constexpr double BytesOfDiskettePart = 1457275;

}  // namespace zarn
