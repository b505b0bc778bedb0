#pragma once

#include <functional>
#include <string>

namespace zarn {

/// The product's pages on the web. Whoever builds the window configures the addresses; what leads
/// to an empty one is disabled.
struct WebPages {
    std::string news;
    std::string support;

    /// Opens an address; where it is left empty the desktop's browser does. A page that cannot be
    /// opened is not reported.
    std::function<void(const std::string& address)> open;
};

}  // namespace zarn
