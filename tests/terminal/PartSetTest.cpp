#include "support/Prelude.h"
#include "terminal/PartSet.h"
#include "terminal/SetReport.h"

namespace zarn::testing {
namespace {

// A folder of names and of the texts in them. A script has one line a part, "refused" is none.
class TextFolder : public SetFolder {
  public:
    explicit TextFolder(const std::map<std::string, std::string>& files) : files_(files) {
        for (const auto& [name, text] : files) {
            names_.push_back(name);
        }
    }
    const std::vector<std::string>& Names() override { return names_; }
    std::variant<JoinScript, ScriptRefusal> Script(const std::string& name) override {
        if (files_.at(name) == "refused") {
            return ScriptRefusal{3, "no"};
        }
        JoinScript script;
        script.original = "original";
        for (const std::string& part : Split(files_.at(name), "\n")) {
            script.commands.push_back({ScriptAction::AppendPart, part, {}});
        }
        return script;
    }
    std::optional<std::string> Text(const std::string& name) override { return files_.at(name); }

  private:
    std::map<std::string, std::string> files_;
    std::vector<std::string> names_;
};

std::string TextOf(const SetMember& member) {
    const std::string checksum = member.checksum ? "=" + std::to_string(*member.checksum) : "";
    return " " + member.name + checksum + (member.problem.empty() ? "" : "!");
}

// What is found: "original: parts; other files; surplus <script, checksums> size and checksum".
std::string Found(const std::string& name, const std::map<std::string, std::string>& files) {
    TextFolder folder(files);
    const auto found = FindSet(name, folder);
    if (const auto* reason = std::get_if<NoSet>(&found)) {
        return *reason;
    }
    const auto& set = std::get<PartSet>(found);
    std::string text = set.original + ":";
    for (const SetMember& part : set.parts) {
        text += TextOf(part);
    }
    for (const SetMember& other : set.others) {
        text += ";" + TextOf(other);
    }
    for (const std::string& surplus : set.surplus) {
        text += " +" + surplus;
    }
    const std::string beside = set.script + "," + set.checksums;
    text += beside == "," ? "" : " <" + beside + ">";
    text += set.wholeSize ? " " + std::to_string(static_cast<int>(*set.wholeSize)) : "";
    return text + (set.wholeChecksum ? " " + std::to_string(*set.wholeChecksum) : "");
}

TEST(SetFinder, FindsASetByAnyOfItsFiles) {
    const std::map<std::string, std::string> bare = {
        {"a_Part1", ""}, {"a_Part3", ""}, {"a_Part03", ""}, {"b_Part1", ""}, {"a_Part1.bak", ""}};
    std::map<std::string, std::string> listed = bare;
    listed["a_Part0.sfv"] = "; x\na_Part1  A\na_Part2 0000000b\na_Part1.bak  1\n../up 00000001\n";
    std::map<std::string, std::string> scripted = listed;
    scripted["a_Part0.bat"] = "a_Part1\na_Part2\na_Part4";
    std::map<std::string, std::string> numbered = {{"n.001", ""}, {"n.999", ""}, {"n.1000", ""}};
    std::map<std::string, std::string> crc = {{"n.001", ""},
                                              {"N.CRC", "FileName = m n\r\nsize=7\r\ncrc32=fF"}};
    std::map<std::string, std::string> foreign = {
        {"x.sfv", "q/a b 00000001\nc:\\w 00000002\nsame  1\nsame  2\nodd\n"}, {"same", ""}};
    using Case = std::tuple<std::string, std::map<std::string, std::string>, std::string>;
    const std::string byList =
        "a: a_Part1=10 a_Part2=11; a_Part1.bak=1; ../up! +a_Part03 +a_Part3 ";
    for (const auto& [name, files, text] :
         {Case("a_Part2", bare, "a: a_Part1 a_Part2 a_Part3 +a_Part03"),
          Case("a_Part03", bare, "a: a_Part01 a_Part02 a_Part03 +a_Part1 +a_Part3"),
          Case("a_Part0.bat", bare, "there is no such file"),
          Case("c_Part1", bare, "there is no such file"),
          Case("n.001", bare, "there is no such file"),
          Case("a_Part12345", bare, "is no part, join script or checksum file"),
          Case("_Part1", bare, "is no part, join script or checksum file"),
          Case("a.01", bare, "is no part, join script or checksum file"),
          Case("a_Part3", listed, byList + "<,a_Part0.sfv>"),
          Case("a_Part0.sfv", listed, byList + "<,a_Part0.sfv>"),
          Case("a_Part2", scripted,
               "original: a_Part1=10 a_Part2=11 a_Part4!; a_Part1.bak=1; ../up! "
               "<a_Part0.bat,a_Part0.sfv>"),
          Case("x_Part0.bat", {{"x_Part0.bat", "refused"}}, "x_Part0.bat: line 3: no"),
          Case("e.sfv", {{"e.sfv", "; nothing\n"}}, "it names no files"),
          Case("x.sfv", foreign, ":; q\\a b=1; c:\\w!; same=1; same=2; odd! <,x.sfv>"),
          Case("n.1000", {{"n.001", ""}, {"n.002", ""}}, "n: n.001 n.002"),
          Case("n.001", crc, "m n: n.001 <,N.CRC> 7 255"),
          Case("n.crc", crc, "m n: n.001 <,N.CRC> 7 255"),
          Case("n.crc", {{"n.001", ""}, {"n.crc", "filename=..\\m\nsize=x\ncrc32=123456789"}},
               "n: n.001 <,n.crc>")}) {
        const std::string found = Found(name, files);
        EXPECT_EQ(found, text) << name;
    }
    EXPECT_TRUE(Found("n.001", numbered).ends_with(" n.998 n.999 n.1000"));
}

TEST(SetReport, KnowsTheUsualLength) {
    using Case = std::pair<std::vector<std::int64_t>, std::int64_t>;
    for (const auto& [lengths, usual] :
         {Case({}, 0), Case({7}, 7), Case({9, 7}, 9), Case({7, 9}, 7), Case({9, 2, 9, 1}, 9),
          Case({9, 2, 1}, 9), Case({2, 9, 9, 9}, 9)}) {
        EXPECT_EQ(UsualLength(lengths), usual);
    }
}

}  // namespace
}  // namespace zarn::testing
