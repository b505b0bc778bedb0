#include "terminal/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

#include "runtime/Product.h"
#include "terminal/HelpPages.h"
#include "terminal/Sizes.h"

namespace zarn {

namespace {

constexpr int WrongUsage = 2;

UsageAnswer Refusal(std::string_view command, const std::string& reason) {
    const std::string name = command.empty() ? "zarn" : "zarn " + std::string(command);
    return {WrongUsage, name + ": " + reason + "\nTry \"" + name + " --help\".\n"};
}

/// What is wrong with a line.
using Fault = std::optional<std::string>;

std::optional<std::int32_t> Whole(const std::string& text, std::int32_t least, std::int32_t most) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    const bool fits = read.ec == std::errc() && read.ptr == end && number >= least;
    return fits && number <= most ? std::optional(number) : std::nullopt;
}

// The library takes the word behind an option for its value, so a level, which may be left out, is
// tied to its option here: "-fz5" becomes "-f", "--compress=5".
void AddWord(std::string word, std::vector<std::string>& words) {
    constexpr std::string_view Usual = "--compress=6";
    const std::size_t mark = word.find('z');
    const bool isBundle = word.size() > 1 && word.front() == '-' && mark != std::string::npos &&
                          word.substr(1, mark - 1).find_first_not_of("fq") == std::string::npos;
    if (!isBundle) {
        words.emplace_back(word == "--compress" ? Usual : word);
        return;
    }
    const std::size_t end = std::min(word.find_first_not_of("0123456789", mark + 1), word.size());
    const std::string level = word.substr(mark + 1, end - mark - 1);
    words.emplace_back(level.empty() ? Usual : "--compress=" + level);
    word.erase(mark, end - mark);
    if (word != "-") {
        words.push_back(word);
    }
}

// The library reads some names as lists. It does not if they have a folder.
std::vector<std::string> WordsForLibrary(std::span<const std::string> given) {
    std::vector<std::string> words;
    bool onlyNames = false;
    for (const std::string& word : given) {
        const bool isList = word.starts_with('[') || word == "{}" || word == "%%";
        if (isList || onlyNames) {
            words.push_back((isList ? "./" : "") + word);
        } else {
            onlyNames = word == "--";
            AddWord(word, words);
        }
    }
    std::reverse(words.begin(), words.end());
    return words;
}

/// The texts of a command's options, as they were typed.
struct Values {
    CLI::Option* files = nullptr;
    CLI::Option* folder = nullptr;
    CLI::Option* passwordFile = nullptr;
    std::string size;
    std::string count;
    std::string level;
};

void AddCommon(CLI::App& app, CommonOptions& options, Values& values) {
    app.set_help_flag("-h,--help");
    values.files = app.add_option("FILE", options.files);
    app.add_flag("-q,--quiet", options.quiet);
}

void AddSplit(CLI::App& app, SplitOptions& options, Values& values) {
    values.folder = app.add_option("-o,--output", options.folder);
    app.add_option("-s,--size", values.size);
    app.add_option("-n,--count", values.count);
    app.add_option("--compress", values.level);
    app.add_flag("--ask-password", options.askPassword);
    values.passwordFile = app.add_option("--password-file", options.passwordFile);
    app.add_flag("--sfv", options.sfv);
    app.add_flag("--delete-source", options.deleteSource);
    app.add_flag("--delete-parts", options.deleteParts);
    app.add_flag("-f,--force", options.force);
}

void AddJoin(CLI::App& app, JoinOptions& options, Values& values) {
    values.folder = app.add_option("-o,--output", options.folder);
    app.add_flag("--verify", options.verify);
    app.add_flag("--delete-parts", options.deleteParts);
    app.add_flag("-f,--force", options.force);
}

void AddCheck(CLI::App& /*app*/, CheckOptions& /*options*/, Values& /*values*/) {
}

Fault TakeSizes(SplitOptions& options, const Values& values) {
    constexpr std::int32_t MostParts = 9999;
    if (values.size.empty() == values.count.empty()) {
        return "one of --size and --count is wanted";
    }
    if (!values.size.empty()) {
        options.size = ParseSize(values.size);
        return options.size ? Fault() : "\"" + values.size + "\" is no size, such as 700M";
    }
    const auto count = Whole(values.count, 1, MostParts);
    options.count = count.value_or(0);
    return count ? Fault() : "\"" + values.count + "\" is no number of parts from 1 to 9999";
}

Fault TakeCompression(SplitOptions& options, const Values& values) {
    constexpr std::int32_t Usual = 6;
    constexpr std::int32_t Strongest = 9;
    const bool hasPassword = options.askPassword || !options.passwordFile.empty();
    if (values.passwordFile->count() > 0 && options.passwordFile.empty()) {
        return "--password-file wants the name of a file";
    }
    if (options.askPassword && hasPassword && !options.passwordFile.empty()) {
        return "--ask-password and --password-file exclude each other";
    }
    if (!values.level.empty()) {
        options.level = Whole(values.level, 0, Strongest);
        return options.level ? Fault() : "\"" + values.level + "\" is no level from 0 to 9";
    }
    options.level = hasPassword ? std::optional(Usual) : std::nullopt;
    return {};
}

Fault Complete(SplitOptions& options, const Values& values) {
    const Fault fault = TakeSizes(options, values);
    return fault ? fault : TakeCompression(options, values);
}

Fault Complete(JoinOptions& /*options*/, const Values& /*values*/) {
    return {};
}

Fault Complete(CheckOptions& /*options*/, const Values& /*values*/) {
    return {};
}

Fault TakeFiles(CommonOptions& options, const Values& values) {
    options.files = values.files->results();
    if (options.files.empty()) {
        return "the name of a file is missing";
    }
    for (const std::string& file : options.files) {
        if (file.empty()) {
            return "an empty name is no file";
        }
        if (file == "-") {
            return "\"-\" is no file; standard input cannot be used";
        }
    }
    return {};
}

template <typename Options, typename Add>
Request ReadCommand(std::span<const std::string> words, Add add) {
    const std::string& command = words.front();
    Options options;
    Values values;
    CLI::App app;
    AddCommon(app, options, values);
    add(app, options, values);
    try {
        app.parse(WordsForLibrary(words.subspan(1)));
    } catch (const CLI::CallForHelp&) {
        return UsageAnswer{0, std::string(HelpPage(command))};
    } catch (const CLI::ParseError& error) {
        return Refusal(command, error.what());
    }
    Fault fault = TakeFiles(options, values);
    if (!fault && values.folder != nullptr &&
        values.folder->results() == std::vector<std::string>{""}) {
        fault = "--output wants the name of a folder";
    }
    fault = fault ? fault : Complete(options, values);
    return fault ? Request(Refusal(command, *fault)) : Request(options);
}

}  // namespace

Request ReadOptions(std::span<const std::string> words) {
    const std::string command = words.empty() ? std::string() : words.front();
    if (command == "split") {
        return ReadCommand<SplitOptions>(words, AddSplit);
    }
    if (command == "join") {
        return ReadCommand<JoinOptions>(words, AddJoin);
    }
    if (command == "check") {
        return ReadCommand<CheckOptions>(words, AddCheck);
    }
    if (command == "--version") {
        return UsageAnswer{0, "zarn " + std::string(VersionText) + "\n"};
    }
    if (command == "--help" || command == "-h" || command == "help") {
        const std::string_view page = HelpPage(words.size() > 1 ? words[1] : "");
        return UsageAnswer{0, std::string(page.empty() ? HelpPage({}) : page)};
    }
    return command.empty() ? Refusal({}, "a command is missing: split, join or check")
                           : Refusal({}, "\"" + command + "\" is no command");
}

}  // namespace zarn
