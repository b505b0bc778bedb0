#include "window/StartChecks.h"

#include "runtime/ByteUnits.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "settings/Parameters.h"
#include "window/PieceSizes.h"

namespace zarn {

namespace {

using Kind = StartDecision::Kind;

constexpr double LeastSize = 0.01;
constexpr double ExemptMegabytes = 1.44;

constexpr std::string_view NoFolder = "Please select a valid Destination Folder.           ";
constexpr std::string_view BadCount =
    "Invalid pieces number, it must be between 2 and 9999.           ";
constexpr std::string_view BadSize = "Invalid pieces size, please type or select one.           ";
constexpr std::string_view SameSize = "Piece Size is identical to selected file.     ";
constexpr std::string_view LargerThanSource = "Piece Size must be smaller than Source file size   ";
constexpr std::string_view LargerThanDevice =
    "Piece Size must be smaller than Destination Device   ";

bool IsCountRefused(const StartFields& fields) {
    constexpr double Least = 2;
    constexpr double Most = 9999;
    const double count = NumberPrefix(fields.partsNumber);
    return (!fields.bySize && count < Least) || count > Most;
}

/// Checks of a piece size. Each failure is the decision's message.
class SizeChecks {
  public:
    SizeChecks(Files& files, const LocaleSeparators& separators, const StartFields& fields)
        : files_(files),
          separators_(separators),
          fields_(fields),
          typed_(NumberPrefix(fields.partSize)) {}

    [[nodiscard]] StartDecision Run() {
        if (fields_.partSize == TypeCustomSize) {
            return {Kind::EmptyPartSize, {}, SizeCriterion};
        }
        if (typed_ < LeastSize) {
            return Stop(BadSize);
        }
        const double bytes = PieceBytes(fields_);
        if (bytes < LeastSize) {
            return Stop(BadSize);
        }
        if (NumberPrefix(NumberText(bytes, separators_)) == files_.FileSizeBytes(fields_.source)) {
            return Stop(SameSize);
        }
        StartDecision decision = fields_.inMegabytes ? CheckMegabytes() : GoOn();
        if (decision.kind == Kind::GoOn && fields_.inGigabytes) {
            decision = CheckGigabytes();
        }
        decision.pieceBytes = bytes;
        return decision;
    }

  private:
    [[nodiscard]] static StartDecision GoOn() { return {Kind::GoOn, {}, SizeCriterion}; }
    [[nodiscard]] static StartDecision Stop(std::string_view message) {
        return {Kind::Stop, message, SizeCriterion};
    }

    [[nodiscard]] StartDecision CheckMegabytes() {
        const double source = RoundHalfEven(files_.FileSizeMBytes(fields_.source), 2);
        const bool isHeld = typed_ != ExemptMegabytes && files_.FileExist(fields_.source);
        if (source <= typed_ && isHeld) {
            return Stop(LargerThanSource);
        }
        if (IsRemovable() && Capacity(BytesInMegabyte) < RoundHalfEven(typed_, 2) && isHeld) {
            return Stop(LargerThanDevice);
        }
        return GoOn();
    }

    [[nodiscard]] StartDecision CheckGigabytes() {
        const double source = RoundHalfEven(files_.FileSizeGBytes(fields_.source), 2);
        const double size = RoundHalfEven(typed_, 2);
        if (source <= size && files_.FileExist(fields_.source)) {
            return Stop(LargerThanSource);
        }
        if (source == size) {
            return Stop({});
        }
        if (IsRemovable() && Capacity(BytesInGigabyte) < size) {
            return Stop(LargerThanDevice);
        }
        return GoOn();
    }

    [[nodiscard]] bool IsRemovable() { return files_.IsRemovable(fields_.destination); }
    [[nodiscard]] double Capacity(double unit) {
        return RoundHalfEven(files_.GetUnitCapacityBytes(fields_.destination) / unit, 2);
    }

    Files& files_;
    const LocaleSeparators& separators_;
    const StartFields& fields_;
    double typed_;
};

}  // namespace

std::string CleanedPartSize(std::string_view text) {
    std::string cleaned(text);
    for (const std::string_view word :
         {"MB", "GB", "CD-R", "DVD-R", "Zip Drive", "Diskette 3.5''"}) {
        cleaned = Replace(cleaned, word, "");
    }
    return cleaned;
}

double PieceBytes(const StartFields& fields) {
    constexpr double Diskette = 1454236.0;
    constexpr double SmallDvd = 4702989189.12;
    constexpr double LargeDvd = 8504035246.08;
    if (fields.partSize == DisketteSize) {
        return Diskette;
    }
    if (fields.partSize == SmallDvdSize || fields.partSize == LargeDvdSize) {
        return RoundHalfEven(fields.partSize == SmallDvdSize ? SmallDvd : LargeDvd, 0);
    }
    if (fields.itemData) {
        return *fields.itemData;
    }
    const double unit = fields.inMegabytes ? BytesInMegabyte : BytesInGigabyte;
    return RoundHalfEven(NumberPrefix(CleanedPartSize(fields.partSize)) * unit, 0);
}

bool PieceCoversSource(Files& files, const StartFields& fields) {
    const auto covers = [&fields](double size) {
        return RoundHalfEven(size, 2) <= RoundHalfEven(NumberPrefix(fields.partSize), 2);
    };
    return (fields.inMegabytes && covers(files.FileSizeMBytes(fields.source))) ||
           (fields.inGigabytes && covers(files.FileSizeGBytes(fields.source)));
}

bool FitsDestination(Files& files, std::string_view source, std::string_view destination,
                     double bytesInUnit) {
    return files.IsRemovable(destination) ||
           RoundHalfEven(files.FreeBytes(destination) / bytesInUnit, 2) >=
               RoundHalfEven(files.FileSizeBytes(source) / bytesInUnit, 2);
}

StartDecision CheckStart(Files& files, const LocaleSeparators& separators,
                         const StartFields& fields) {
    if (IsTooShort(fields.destination)) {
        return {Kind::Stop, NoFolder, {}};
    }
    if (IsCountRefused(fields)) {
        return {Kind::Stop, BadCount, {}};
    }
    if (!fields.bySize) {
        return {Kind::GoOn, {}, PartsCriterion};
    }
    return SizeChecks(files, separators, fields).Run();
}

}  // namespace zarn
