#include "scripts/FileChecksum.h"

#include <cmath>
#include <cstdint>

#include "scripts/clsCRC32.h"

namespace zarn {

std::string FormatCRCHex(double& value) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    constexpr double Base = 16;
    std::string text;
    while (value != 0) {
        const double rest = std::floor(value / Base);
        text.insert(text.begin(), Digits.at(static_cast<std::size_t>(value - rest * Base)));
        value = rest;
    }
    return text.empty() ? "0" : text;
}

std::string CalcCRC32(FileSystem& fileSystem, const std::string& fileName) {
    clsCRC32 engine(fileSystem);
    double crc = 0;
    std::int16_t success = 0;
    engine.FileCRC(fileName, crc, success);
    if (success == 0) {
        std::int32_t code = 0;
        engine.LastError(code);
        return std::to_string(code) + " ERROR ";
    }
    return FormatCRCHex(crc);
}

}  // namespace zarn
