#include "terminal/HeardMessages.h"

#include <utility>

namespace zarn {

std::vector<std::string> HeardMessages::TakeReasons() {
    std::vector<std::string> reasons = std::exchange(texts_, {});
    for (std::string& text : reasons) {
        text.erase(0, text.rfind('\r') + 1);
    }
    return reasons;
}

}  // namespace zarn
