#include <unistd.h>

#include "support/TestFolder.h"

namespace zarn::testing {
namespace {

/// Every test program starts with this: nothing depends on who runs it, and nobody's settings,
/// temporary folder or screen are used. Locale, scale and home folder are the tests' own.
struct Surroundings {
    Surroundings() {
        std::vector<std::string> names;
        for (char** variable = environ; *variable != nullptr; ++variable) {
            const std::string_view text = *variable;
            names.emplace_back(text.substr(0, text.find('=')));
        }
        for (const std::string& name : names) {
            if (name == "TMPDIR" || name.ends_with("DISPLAY") || name.starts_with("LC_") ||
                name.starts_with("QT_") || name.starts_with("XDG_")) {
                unsetenv(name.c_str());
            }
        }
        setenv("LC_CTYPE", "C.UTF-8", 1);
        Set("LANG", "ZARN_TEST_LOCALE", "C.UTF-8");
        Set("QT_SCALE_FACTOR", "ZARN_TEST_SCALE", "1");
        setenv("HOME", home.System().c_str(), 1);
        setenv("XDG_RUNTIME_DIR", home.System().c_str(), 1);
    }

    /// A run of the same tests in other surroundings names them in variables of its own.
    static void Set(const char* name, const char* chosenBy, const char* otherwise) {
        const char* const chosen = std::getenv(chosenBy);
        setenv(name, chosen == nullptr ? otherwise : chosen, 1);
    }

    TestFolder home;
};

const Surroundings surroundings;

}  // namespace

}  // namespace zarn::testing
