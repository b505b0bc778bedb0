#include "scripts/SetNames.h"

#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

std::string WholeText(double number) {
    return NumberText(number, LocaleSeparators{});
}

std::string TemporaryName(std::string_view source, std::string_view temporaryFolder,
                          std::string_view extension) {
    constexpr std::size_t ExtensionLength = 4;
    const std::string_view name = FunctionLastPathItem(source);
    const std::string_view ending = Right(name, ExtensionLength);
    std::string path(temporaryFolder);
    if (!ending.empty()) {
        path += Replace(name, ending, "");
    }
    return path.append(extension);
}

}  // namespace

std::string MoveTemporary(int number) {
    return "Zarn-" + std::to_string(number) + ".TMP";
}

std::string PartStem(std::string_view original) {
    return std::string(original).append(PartMark);
}

std::string FunctionBasePath(std::string_view path, std::string_view folder) {
    return std::string(folder).append(FunctionLastPathItem(path));
}

std::string FunctionPartNumber(double number, double total) {
    constexpr double LargestNumberedTotal = 9999;
    if (!(total >= 1 && total <= LargestNumberedTotal)) {
        return {};
    }
    const std::size_t width = WholeText(total).size();
    return PadLeft(WholeText(number), width, '0').substr(0, width);
}

bool RepeatsPartNumber(double number, double total) {
    return number > 1 && FunctionPartNumber(number, total).size() < WholeText(number).size();
}

std::string PartPath(std::string_view basePath, double number, double total) {
    return PartStem(basePath).append(FunctionPartNumber(number, total));
}

std::string JoinPartName(std::string_view originalName, std::int32_t count, std::int32_t index) {
    constexpr std::int32_t MostNumbered = 999;
    return PartStem(originalName)
        .append(count <= MostNumbered ? FunctionPartNumber(index, count) : "");
}

std::string JoinPartPath(std::string_view joinFile, std::string_view originalName,
                         std::int32_t count, std::int32_t index) {
    return FunctionPath(joinFile).append(JoinPartName(originalName, count, index));
}

std::string_view PartDigits(std::string_view name) {
    return name.substr(name.find_last_not_of("0123456789") + 1);
}

bool IsPartOf(std::string_view name, std::string_view original) {
    const std::string_view head = name.substr(0, name.size() - PartDigits(name).size());
    return SameName(head, PartStem(original));
}

std::string PathBesideParts(std::string_view firstPart, std::string_view destinationBase,
                            std::string_view ending) {
    const std::vector<std::string> pieces = Split(firstPart, PartMark);
    if (pieces.size() < 2) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    std::string path = FunctionPath(destinationBase).append(PartStem(pieces[0]));
    return path.append(Replace(pieces[1], "1", "0")).append(ending);
}

std::string SfvPath(std::string_view joinFile) {
    std::string result;
    while (!joinFile.empty()) {
        const bool isEnding = SameName(joinFile.substr(0, ScriptEnding.size()), ScriptEnding);
        result += isEnding ? ".SFV" : joinFile.substr(0, 1);
        joinFile.remove_prefix(isEnding ? ScriptEnding.size() : 1);
    }
    return result;
}

std::string TempScript(std::string_view joinFile) {
    std::string copy = Replace(joinFile, ScriptEnding, ScriptCopyEnding);
    if (copy == joinFile) {
        copy += ScriptCopyEnding;
    }
    return copy;
}

std::string PartsBase(std::string_view joinFile) {
    const std::size_t mark = joinFile.find(PartMark);
    return std::string(mark == std::string_view::npos ? "" : joinFile.substr(0, mark));
}

std::vector<std::string> NamesBesideParts(std::string_view original, std::string_view part,
                                          std::string_view scriptName) {
    std::vector<std::string> names;
    const std::string zeros(PartDigits(part).size(), '0');
    for (const std::string_view ending : {ScriptEnding, ScriptCopyEnding, ChecksumEnding}) {
        names.push_back(PartStem(original).append(zeros).append(ending));
    }
    for (const std::string_view ending : {ScriptCopyEnding, ScriptEnding}) {
        if (SameName(Right(scriptName, ending.size()), ending) &&
            IsPartOf(scriptName.substr(0, scriptName.size() - ending.size()), original)) {
            names.emplace_back(scriptName);
        }
    }
    return names;
}

std::string FunctionZipTempName(std::string_view source, std::string_view temporaryFolder) {
    return TemporaryName(source, temporaryFolder, ".zip");
}

std::string FunctionExeTempName(std::string_view source, std::string_view temporaryFolder) {
    return TemporaryName(source, temporaryFolder, ".exe");
}

std::string FunctionFolderPlusName(std::string_view folder, std::string_view path) {
    std::string result(folder);
    if (!folder.ends_with('\\')) {
        result += '\\';
    }
    return result.append(FunctionLastPathItem(path));
}

// A short name is not compared with a very long one, character by character, again and again: no
// character grows to more than three times its bytes in upper case.
bool SameName(std::string_view one, std::string_view other) {
    constexpr std::size_t MostGrowth = 3;
    return one == other ||
           (one.size() <= MostGrowth * other.size() && other.size() <= MostGrowth * one.size() &&
            UpperCase(one) == UpperCase(other));
}

// A colon behind one character makes a drive of it; elsewhere it is part of the name.
bool IsBareName(std::string_view name) {
    const bool namesDrive = name.size() > 1 && name[1] == ':';
    return !namesDrive && !Trim(name).empty() && name != "." && name != ".." &&
           name.find_first_of("\\/*?") == std::string_view::npos && !HasControls(name);
}

bool IsGoodOriginal(std::string_view name, std::string_view scriptName) {
    constexpr std::size_t LongestName = 255;  // in characters, on any file system
    constexpr std::size_t BytesOfOne = 4;
    return name.size() <= LongestName * BytesOfOne && IsBareName(name) &&
           !SameName(name, JoinTemporary) && !SameName(name, scriptName) &&
           !SameName(Right(name, ScriptCopyEnding.size()), ScriptCopyEnding);
}

}  // namespace zarn
