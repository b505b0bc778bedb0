#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace zarn {

// What a command line of `zarn` asks for. Paths are the system's, as they were typed.

/// What all commands know.
struct CommonOptions {
    std::vector<std::string> files;  ///< at least one, none of them empty or `-`
    bool quiet = false;              ///< no progress line, no summary
};

struct SplitOptions : CommonOptions {
    std::string folder;                ///< of the parts; empty: each file's own
    std::optional<std::int64_t> size;  ///< bytes of a part; else `count` holds
    std::int32_t count = 0;            ///< parts, 1 to 9999
    std::optional<std::int32_t>
        level;  ///< 0 to 9, of a ZIP that is cut instead; also with a password
    bool askPassword = false;
    std::string passwordFile;
    bool sfv = false;
    bool deleteSource = false;
    bool deleteParts = false;  ///< the join script does, after it has joined
    bool force = false;
};

struct JoinOptions : CommonOptions {
    std::string folder;  ///< of the joined file; empty: that of its parts
    bool verify = false;
    bool deleteParts = false;
    bool force = false;
};

struct CheckOptions : CommonOptions {};

/// A line that is answered by a text alone: help, version, wrong usage.
struct UsageAnswer {
    int status = 0;  ///< 2 for wrong usage, whose text goes to standard error
    std::string text;
};

using Request = std::variant<UsageAnswer, SplitOptions, JoinOptions, CheckOptions>;

/// Reads the words behind the program's name.
[[nodiscard]] Request ReadOptions(std::span<const std::string> words);

}  // namespace zarn
