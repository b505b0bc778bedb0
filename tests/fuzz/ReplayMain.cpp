#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/Fuzz.h"

/// Runs every file of a folder; the last name on standard error is the input that broke a rule.
int main(int count, char** arguments) {
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(count > 1 ? arguments[1] : ".")) {
        static_cast<void>(std::fprintf(stderr, "%s\n", entry.path().filename().c_str()));
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        zarn::fuzz::RunInput(bytes);
        ++inputs;
    }
    zarn::fuzz::Require(inputs > 0, "a corpus holds inputs");
    return 0;
}
