#include "join/PriorityPause.h"

#include <array>
#include <cstddef>

namespace zarn {

namespace {

// 2, 1.8, 1.5, 1.2, 0.8, 0.4, 0.2, 0.1, 0.05 and 0.01 in whole milliseconds.
constexpr std::array<int, 10> Pauses = {2, 2, 2, 1, 1, 0, 0, 0, 0, 0};

}  // namespace

std::optional<std::chrono::milliseconds> PriorityPause(double priorityProcessor) {
    for (std::size_t step = 0; step < Pauses.size(); ++step) {
        if (static_cast<double>(step) == priorityProcessor) {
            return std::chrono::milliseconds(Pauses.at(step));
        }
    }
    return std::nullopt;
}

}  // namespace zarn
