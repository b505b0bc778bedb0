#include "scripts/BatchGenerator.h"

#include "runtime/CodePage.h"
#include "runtime/Product.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/BatchText.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

constexpr std::size_t TitleWidth = 107;

std::string RuleLine() {
    return Line(RuleText());
}

std::string TitleLine() {
    std::string line = "Rem |  " + ProductText() + "  ";
    line.append(WebAddress);
    line.resize(TitleWidth, ' ');
    return Line(line);
}

}  // namespace

void BatchGenerator::OriginalFile(std::string_view fileName) {
    originalFile_ = Quoted(FunctionLastPathItem(fileName));
}

void BatchGenerator::FilesADD(std::string_view fileName) {
    files_.push_back(Quoted(Trim(fileName)));
}

std::string BatchGenerator::FunctionFileBat(std::string_view firstPart,
                                            std::string_view destinationBase) {
    return PathBesideParts(firstPart, destinationBase, ScriptEnding);
}

std::unique_ptr<PendingFile> BatchGenerator::FilesMakeBat(std::string_view firstPart,
                                                          std::string_view destinationBase,
                                                          bool deletesParts) {
    const std::string text = HeadLines() + CopyLines() + ClosingLines(deletesParts);
    const std::string path = FunctionFileBat(firstPart, destinationBase);
    return shared_.Platform().fileSystem->PrepareFile(path, EncodeText(text));
}

std::string BatchGenerator::HeadLines() {
    const DateTime now = shared_.Platform().clock->Now();
    const LocaleSeparators& separators = shared_.Separators();
    const std::string created = DateText(now, separators.date) + " " +
                                ClockText(now, separators.time, ClockDetail::Minutes);
    return Line("@Echo off") + RuleLine() + TitleLine() + RuleLine() +
           Line("Rem |  Created ......: " + created) +
           Line(std::string(CountMark).append(" ..: ").append(std::to_string(files_.size()))) +
           Line(std::string(NameMark).append(" : ").append(originalFile_)) + RuleLine() +
           Line("Rem  ");
}

std::string BatchGenerator::CopyLines() const {
    if (files_.empty()) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    // The first part starts the temporary file, every other one is added to its end.
    const std::string built(JoinTemporary);
    std::string lines = Line("IF EXIST " + built + " Del " + built);
    lines += Line("Copy " + files_.front() + " " + built);
    for (std::size_t index = 1; index < files_.size(); ++index) {
        lines.append("Copy /b ").append(built).append(" + ").append(files_[index]);
        lines.append(" ").append(Line(built));
    }
    return lines;
}

std::string BatchGenerator::ClosingLines(bool deletesParts) const {
    std::string lines = Line("IF EXIST " + originalFile_ + " Del " + originalFile_) +
                        Line("Ren " + std::string(JoinTemporary) + " " + originalFile_);
    if (deletesParts) {
        lines += Line("Del " + Quoted(PartStem(Replace(originalFile_, "\"", "")) + "*"));
    }
    return lines + Line("Rem  ") + Line("Rem *===== End of Program =====* ");
}

}  // namespace zarn
