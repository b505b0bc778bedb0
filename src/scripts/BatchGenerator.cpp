#include "scripts/BatchGenerator.h"

#include "runtime/CodePage.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view PartMark = "_Part";
constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view WebAddress = "https://zarnfilesplitter.test";
constexpr std::size_t TitleWidth = 107;
constexpr std::size_t RuleWidth = 73;

std::string Quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::string Line(std::string text) {
    return text.append(LineEnd);
}

std::string RuleLine() {
    return Line("Rem " + std::string(RuleWidth, '='));
}

std::string TitleLine() {
    std::string line = "Rem |  Zarn File Splitter ";
    line.append(VersionText).append("  ").append(WebAddress);
    line.resize(TitleWidth, ' ');
    return Line(line);
}

std::string TwoDigits(int value) {
    return (value < 10 ? "0" : "") + std::to_string(value);
}

// Month before day and the 12-hour clock in every locale; only the separators are the locale's.
std::string MomentText(const DateTime& moment, const LocaleSeparators& separators) {
    std::string year = std::to_string(moment.year);
    year.insert(0, year.size() < 4 ? 4 - year.size() : 0, '0');
    const int hour = moment.hour % 12 == 0 ? 12 : moment.hour % 12;
    return TwoDigits(moment.month) + separators.date + TwoDigits(moment.day) + separators.date +
           year + " " + TwoDigits(hour) + separators.time + TwoDigits(moment.minute) +
           (moment.hour < 12 ? " AM" : " PM");
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
    const std::vector<std::string> pieces = Split(firstPart, PartMark);
    if (pieces.size() < 2) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    std::string path = Files::FunctionPath(destinationBase);
    return path.append(pieces[0]).append(PartMark).append(Replace(pieces[1], "1", "0")) + ".bat";
}

std::unique_ptr<PendingFile> BatchGenerator::PrepareBat(std::string_view firstPart,
                                                        std::string_view destinationBase,
                                                        std::string_view /*crc*/) {
    const std::string text = HeadLines() + CopyLines() + ClosingLines();
    const std::string path = FunctionFileBat(firstPart, destinationBase);
    return shared_.Platform().fileSystem->PrepareFile(path, EncodeText(text));
}

void BatchGenerator::FilesMakeBat(std::string_view firstPart, std::string_view destinationBase,
                                  std::string_view crc) {
    PrepareBat(firstPart, destinationBase, crc)->Commit();
}

std::string BatchGenerator::HeadLines() {
    const std::string created = MomentText(shared_.Platform().clock->Now(), shared_.Separators());
    return Line("@Echo off") + RuleLine() + TitleLine() + RuleLine() +
           Line("Rem |  Created ......: " + created) +
           Line("Rem |  Parts Count ..: " + std::to_string(files_.size())) +
           Line("Rem |  Original File : " + originalFile_) + RuleLine() + Line("Rem  ");
}

std::string BatchGenerator::CopyLines() const {
    if (files_.empty()) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    // The first part starts the temporary file, every other one is added to its end.
    std::string lines = Line("IF EXIST Zarn.TMP Del Zarn.TMP");
    lines += Line("Copy " + files_.front() + " Zarn.TMP");
    for (std::size_t index = 1; index < files_.size(); ++index) {
        lines += Line("Copy /b Zarn.TMP + " + files_[index] + " Zarn.TMP");
    }
    return lines;
}

std::string BatchGenerator::ClosingLines() {
    std::string lines = Line("IF EXIST " + originalFile_ + " Del " + originalFile_) +
                        Line("Ren Zarn.TMP " + originalFile_);
    if (shared_.Parameters().DeleteSplitParts() == 1) {
        std::string pattern = Replace(originalFile_, "\"", "");
        lines += Line("Del " + Quoted(pattern.append(PartMark) + "*"));
    }
    return lines + Line("Rem  ") + Line("Rem *===== End of Program =====* ");
}

}  // namespace zarn
