// The reader of SFV files. An input is the file's bytes.
#include "fuzz/Fuzz.h"
#include "runtime/Text.h"
#include "scripts/SfvReader.h"

namespace zarn::fuzz {

void RunInput(std::string_view input) {
    const auto lines = ReadSfv(input);
    Require(lines.has_value(), "a text of this size is read");
    std::size_t last = 0;
    for (const SfvLine& line : *lines) {
        Require(line.line > last && line.line <= input.size(), "the lines have their order");
        last = line.line;
        Require(!line.name.empty() && IsUtf8(line.name + line.problem),
                "a line has a name, a text");
        Require(line.name.find_first_of("\r\n") == std::string::npos, "a name is one line");
        Require(Contains(input, line.rawName), "a raw name is in the file");
        Require(line.checksum.has_value() == line.problem.empty(), "a checksum or the reason");
        const std::string crc = std::to_string(line.checksum.value_or(0) % 10);
        const auto again = ReadSfv(";\n" + line.rawName + "  " + crc + "\r\n");
        Require(again && again->size() == 1 && again->front().rawName == line.rawName &&
                    again->front().checksum.value_or(10) == line.checksum.value_or(0) % 10,
                "what is written is read again");
    }
}

}  // namespace zarn::fuzz
