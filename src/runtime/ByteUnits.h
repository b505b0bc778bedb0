#pragma once

namespace zarn {

/// Sizes are told in powers of two throughout. Doubles, like the sizes that they divide; dividing
/// by a power of two loses nothing.
inline constexpr double BytesInKilobyte = 1024;
inline constexpr double BytesInMegabyte = 1048576;
inline constexpr double BytesInGigabyte = 1073741824;

}  // namespace zarn
