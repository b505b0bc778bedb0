#pragma once

namespace zarn {

/// Whole pixels of a length in twips, at 15 twips to the pixel (96 dots an inch, 1440 twips).
constexpr int Pixels(int twips) {
    return twips / 15;
}

}  // namespace zarn
