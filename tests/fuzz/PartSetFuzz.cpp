// The sets that names and checksum files make. An input is names, one a line, the first of which is
// asked for; behind an empty line the bytes of every checksum file.
#include <algorithm>
#include <set>

#include "fuzz/Fuzz.h"
#include "runtime/Text.h"
#include "terminal/PartSet.h"

namespace zarn::fuzz {

namespace {

class TextFolder : public SetFolder {
  public:
    explicit TextFolder(std::string_view input) : text_(input) {
        const std::size_t end = input.find("\n\n");
        // No file is called otherwise.
        names_ = Split(Replace(Replace(input.substr(0, end), "/", ""), "\\", ""), "\n");
        asked = names_.empty() ? std::string() : names_.front();
        std::ranges::sort(names_);
        text_ = input.substr(std::min(end, input.size()));
    }
    const std::vector<std::string>& Names() override { return names_; }
    std::variant<JoinScript, ScriptRefusal> Script(const std::string& /*name*/) override {
        JoinScript script;
        script.original = "a";
        script.commands = {{ScriptAction::MakeTemporary, "a_Part1", {}}};
        return script;
    }
    std::optional<std::string> Text(const std::string& /*name*/) override { return text_; }

    std::string asked;

  private:
    std::vector<std::string> names_;
    std::string text_;
};

void CheckSet(const PartSet& set) {
    std::set<std::string> names;
    Require(set.parts.empty() == set.original.empty(), "parts make a file");
    for (const SetMember& part : set.parts) {
        Require(names.insert(part.name).second, "no part is there twice");
        Require(part.name.find_first_of("/\\") == std::string::npos, "a part is in the folder");
    }
    for (const std::string& surplus : set.surplus) {
        Require(!names.contains(surplus), "a surplus file is no part");
    }
    for (const SetMember& other : set.others) {
        const bool leaves =
            other.name.starts_with('\\') || Contains("\\" + other.name + "\\", "\\..\\");
        Require(!leaves || !other.problem.empty(), "no file of another folder is looked at");
    }
}

}  // namespace

void RunInput(std::string_view input) {
    TextFolder folder(input);
    const auto found = FindSet(folder.asked, folder);
    if (const auto* set = std::get_if<PartSet>(&found)) {
        CheckSet(*set);
    }
    const CrcFile file = ReadCrcFile(input);
    const std::string bytes = std::to_string(static_cast<std::uint64_t>(file.size.value_or(0)));
    const CrcFile again = ReadCrcFile("filename=" + file.name + "\r\nsize=" + bytes);
    Require(again.name == file.name, "a name is read as it is written");
    Require(file.size.value_or(0) > 9e15 || again.size == file.size.value_or(0), "so is a size");
}

}  // namespace zarn::fuzz
