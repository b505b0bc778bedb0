#include "terminal/PartSet.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <unordered_map>
#include <unordered_set>

#include "runtime/Text.h"
#include "scripts/SetNames.h"
#include "scripts/SfvReader.h"

namespace zarn {

namespace {

constexpr std::string_view CrcEnding = ".crc";
constexpr std::size_t NumberedWidth = 3;  // of "NAME.001"; longer where there are more
constexpr std::int32_t MostNumbered = 99999;

/// How the parts of a set are called: a stem and a number.
struct Naming {
    std::string original;
    std::string stem;
    std::size_t width = 0;
    bool grows = false;  ///< the thousandth part has a digit more
};

bool EndsIn(std::string_view name, std::string_view ending) {
    return name.size() > ending.size() &&
           SameName(name.substr(name.size() - ending.size()), ending);
}

std::string WithoutEnding(std::string_view name, std::string_view ending) {
    return std::string(name.substr(0, name.size() - ending.size()));
}

// Of a part, or of what lies beside the parts, whose number is all zeros.
std::optional<Naming> NamingOf(std::string_view name) {
    constexpr std::size_t MostDigits = 4;
    const std::string_view digits = PartDigits(name);
    const std::string_view stem = name.substr(0, name.size() - digits.size());
    if (stem.ends_with(PartMark) && stem.size() > PartMark.size() && !digits.empty() &&
        digits.size() <= MostDigits) {
        return Naming{WithoutEnding(stem, PartMark), std::string(stem), digits.size(), false};
    }
    if (stem.ends_with('.') && stem.size() > 1 && digits.size() >= NumberedWidth) {
        const std::size_t width = digits.starts_with('0') ? digits.size() : NumberedWidth;
        return Naming{WithoutEnding(stem, "."), std::string(stem), width, true};
    }
    return std::nullopt;
}

std::string NameOf(const Naming& naming, std::int32_t number) {
    return naming.stem + PadLeft(std::to_string(number), naming.width, '0');
}

// 0 for a name that is no part of the set.
std::int32_t NumberOf(const Naming& naming, std::string_view name) {
    if (!name.starts_with(naming.stem)) {
        return 0;
    }
    const std::string_view digits = name.substr(naming.stem.size());
    std::int32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isName = number > 0 && NameOf(naming, number) == name;
    const std::int32_t most =
        naming.grows ? MostNumbered : std::numeric_limits<std::int32_t>::max();
    return isName && number <= most && (naming.grows || digits.size() == naming.width) ? number : 0;
}

std::string NameBeside(const Naming& naming, std::string_view ending) {
    return (naming.stem + std::string(naming.width, '0')).append(ending);
}

// A checksum file of another program may name files in folders below its own; others are not
// followed.
std::optional<std::string> NameBelow(std::string_view name) {
    std::string path = Replace(name, "/", "\\");
    while (path.starts_with(".\\")) {
        path.erase(0, 2);
    }
    const bool leaves = path.empty() || path.starts_with('\\') ||
                        path.substr(0, 2).ends_with(':') ||
                        ("\\" + path + "\\").find("\\..\\") != std::string::npos;
    return leaves ? std::nullopt : std::optional(path);
}

class SetFinder {
  public:
    SetFinder(const std::string& name, SetFolder& folder) : name_(name), folder_(folder) {}

    std::variant<PartSet, NoSet> Find();

  private:
    using Found = std::variant<PartSet, NoSet>;

    [[nodiscard]] bool Has(std::string_view name) const;
    [[nodiscard]] std::optional<std::string> Spelled(std::string_view name) const;
    Found FromNaming(const Naming& naming);
    Found FromScript(const std::string& script, const std::string& checksums);
    Found FromChecksums(const std::string& checksums);
    Found FromNames(const Naming& naming);
    void AddParts(const Naming& naming, std::int32_t count);
    void AddCrcFile(const Naming& naming);
    bool AddChecksums(const std::string& checksums);
    void AddChecksum(const SfvLine& line, SetMember& member);
    void AddOther(const SfvLine& line);
    void AddSurplus();
    [[nodiscard]] std::int32_t LastNumber(const Naming& naming) const;

    const std::string& name_;
    SetFolder& folder_;
    PartSet set_;
    std::optional<std::vector<SfvLine>> lines_;
};

SetFinder::Found SetFinder::Find() {
    if (EndsIn(name_, ScriptEnding)) {
        const std::string checksums = WithoutEnding(name_, ScriptEnding).append(ChecksumEnding);
        return FromScript(name_, Spelled(checksums).value_or(""));
    }
    if (EndsIn(name_, ChecksumEnding)) {
        return FromChecksums(name_);
    }
    const std::optional<Naming> naming =
        NamingOf(EndsIn(name_, CrcEnding) ? WithoutEnding(name_, CrcEnding) + ".001" : name_);
    return naming ? FromNaming(*naming) : NoSet("is no part, join script or checksum file");
}

bool SetFinder::Has(std::string_view name) const {
    return std::ranges::binary_search(folder_.Names(), name);
}

// As the name stands in the folder, be it in other letter case.
std::optional<std::string> SetFinder::Spelled(std::string_view name) const {
    if (Has(name)) {
        return std::string(name);
    }
    const auto found = std::ranges::find_if(
        folder_.Names(), [name](const std::string& other) { return SameName(other, name); });
    return found == folder_.Names().end() ? std::nullopt : std::optional(*found);
}

SetFinder::Found SetFinder::FromNaming(const Naming& naming) {
    if (!naming.grows) {
        const auto checksums = Spelled(NameBeside(naming, ChecksumEnding));
        if (const auto script = Spelled(NameBeside(naming, ScriptEnding))) {
            return FromScript(*script, checksums.value_or(""));
        }
        if (checksums) {
            return FromChecksums(*checksums);
        }
    }
    return FromNames(naming);
}

SetFinder::Found SetFinder::FromScript(const std::string& script, const std::string& checksums) {
    if (!Has(script)) {
        return "there is no such file";
    }
    const std::variant<JoinScript, ScriptRefusal> read = folder_.Script(script);
    if (const auto* refusal = std::get_if<ScriptRefusal>(&read)) {
        const std::string line =
            refusal->line == 0 ? std::string() : "line " + std::to_string(refusal->line) + ": ";
        return script + ": " + line + refusal->reason;
    }
    const auto& accepted = std::get<JoinScript>(read);
    set_.script = script;
    set_.original = accepted.original;
    for (const ScriptCommand& command : accepted.commands) {
        if (!command.part.empty()) {
            set_.parts.push_back({command.part, {}, {}});
        }
    }
    if (!checksums.empty() && !AddChecksums(checksums)) {
        return checksums + ": it is no checksum file";
    }
    AddSurplus();
    return set_;
}

// The file's own name tells the set, or the first part that it names.
SetFinder::Found SetFinder::FromChecksums(const std::string& checksums) {
    if (!Has(checksums)) {
        return "there is no such file";
    }
    const std::optional<std::string> text = folder_.Text(checksums);
    lines_ = text ? ReadSfv(*text) : std::nullopt;
    if (!lines_) {
        return "it is no checksum file";
    }
    if (lines_->empty()) {
        return "it names no files";
    }
    std::optional<Naming> naming = NamingOf(WithoutEnding(checksums, ChecksumEnding));
    for (auto line = lines_->begin(); !naming && line != lines_->end(); ++line) {
        naming = IsBareName(line->name) ? NamingOf(line->name) : std::nullopt;
    }
    if (naming && !naming->grows) {
        if (const auto script = Spelled(NameBeside(*naming, ScriptEnding))) {
            return FromScript(*script, checksums);
        }
    }
    std::int32_t last = 0;
    for (const SfvLine& line : *lines_) {
        last = naming ? std::max(last, NumberOf(*naming, line.name)) : 0;
    }
    if (last > 0) {
        AddParts(*naming, last);
    }
    static_cast<void>(AddChecksums(checksums));
    AddSurplus();
    return set_;
}

SetFinder::Found SetFinder::FromNames(const Naming& naming) {
    const std::int32_t last = LastNumber(naming);
    if (last == 0) {
        return "there is no such file";
    }
    AddParts(naming, last);
    if (naming.grows) {
        AddCrcFile(naming);
        // Some programs begin to count with it.
        if (const std::string zero = NameBeside(naming, ""); Has(zero)) {
            set_.surplus.push_back(zero);
        }
    } else {
        AddSurplus();
    }
    return set_;
}

void SetFinder::AddParts(const Naming& naming, std::int32_t count) {
    set_.original = naming.original;
    for (std::int32_t number = 1; number <= count; ++number) {
        set_.parts.push_back({NameOf(naming, number), {}, {}});
    }
}

// The name in the file is a text from somebody else.
void SetFinder::AddCrcFile(const Naming& naming) {
    const auto name = Spelled(naming.original + std::string(CrcEnding));
    const std::optional<std::string> text = name ? folder_.Text(*name) : std::nullopt;
    if (!text) {
        return;
    }
    const CrcFile file = ReadCrcFile(*text);
    set_.checksums = *name;
    set_.wholeSize = file.size;
    set_.wholeChecksum = file.checksum;
    if (IsGoodOriginal(file.name, {})) {
        set_.original = file.name;
    }
}

bool SetFinder::AddChecksums(const std::string& checksums) {
    if (!lines_) {
        const std::optional<std::string> text = folder_.Text(checksums);
        lines_ = text ? ReadSfv(*text) : std::nullopt;
    }
    if (!lines_) {
        return false;
    }
    set_.checksums = checksums;
    std::unordered_map<std::string, SetMember*> parts;
    for (SetMember& part : set_.parts) {
        parts.emplace(UpperCase(part.name), &part);
        part.problem = "there is no checksum of it in " + checksums;
    }
    for (const SfvLine& line : *lines_) {
        const auto byRawName = parts.find(UpperCase(line.rawName));
        const auto part = byRawName == parts.end() ? parts.find(UpperCase(line.name)) : byRawName;
        if (part != parts.end()) {
            AddChecksum(line, *part->second);
        } else {
            AddOther(line);
        }
    }
    return true;
}

void SetFinder::AddChecksum(const SfvLine& line, SetMember& member) {
    if (member.checksum && member.checksum != line.checksum) {
        member.problem = set_.checksums + " has two checksums of it";
        return;
    }
    member.checksum = line.checksum;
    member.problem = line.checksum ? ""
                                   : set_.checksums + ", line " + std::to_string(line.line) + ": " +
                                         line.problem;
}

void SetFinder::AddOther(const SfvLine& line) {
    const std::string& name = !Has(line.name) && Has(line.rawName) ? line.rawName : line.name;
    const std::optional<std::string> path = NameBelow(name);
    SetMember member = {path.value_or(name), {}, {}};
    if (path) {
        AddChecksum(line, member);
    } else {
        member.problem = "a file outside of the folder is not looked at";
    }
    set_.others.push_back(std::move(member));
}

void SetFinder::AddSurplus() {
    std::unordered_set<std::string> known;
    for (const auto* members : {&set_.parts, &set_.others}) {
        for (const SetMember& member : *members) {
            known.insert(UpperCase(member.name));
        }
    }
    for (const std::string& name : folder_.Names()) {
        if (IsPartOf(name, set_.original) && !PartDigits(name).empty() &&
            !known.contains(UpperCase(name))) {
            set_.surplus.push_back(name);
        }
    }
}

std::int32_t SetFinder::LastNumber(const Naming& naming) const {
    std::int32_t last = 0;
    for (const std::string& name : folder_.Names()) {
        last = std::max(last, NumberOf(naming, name));
    }
    return last;
}

}  // namespace

bool PartSet::HasChecksums() const {
    return wholeChecksum || std::ranges::any_of(parts, [](const SetMember& part) {
               return part.checksum.has_value();
           });
}

std::variant<PartSet, NoSet> FindSet(const std::string& name, SetFolder& folder) {
    return SetFinder(name, folder).Find();
}

CrcFile ReadCrcFile(std::string_view bytes) {
    constexpr int Hexadecimal = 16;
    CrcFile file;
    for (const std::string& text : Split(Replace(bytes, "\r", "\n"), "\n")) {
        const std::size_t mark = std::min(text.find('='), text.size());
        const std::string key = UpperCase(Trim(text.substr(0, mark), " \t"));
        const std::string_view value =
            Trim(std::string_view(text).substr(std::min(mark + 1, text.size())), " \t");
        const char* const end = value.data() + value.size();
        std::uint64_t number = 0;
        const bool isHexadecimal = key == "CRC32";
        const auto read =
            std::from_chars(value.data(), end, number, isHexadecimal ? Hexadecimal : 10);
        const bool isNumber = read.ec == std::errc() && read.ptr == end;
        if (key == "FILENAME") {
            file.name = value;
        } else if (key == "SIZE" && isNumber) {
            file.size = static_cast<double>(number);
        } else if (isHexadecimal && isNumber && number <= 0xFFFFFFFFU) {
            file.checksum = static_cast<std::uint32_t>(number);
        }
    }
    return file;
}

}  // namespace zarn
