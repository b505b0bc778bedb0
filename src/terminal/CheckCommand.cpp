#include "terminal/CheckCommand.h"

#include <chrono>

#include "terminal/SetReport.h"
#include "terminal/Sizes.h"

namespace zarn {

namespace {

std::string SummaryOf(const FoundSet& found, const SetReport& report, double seconds) {
    const std::size_t files = found.set.parts.empty() ? found.set.others.size() : 0;
    const std::string what =
        files > 0 ? CountText(files, "file")
                  : CountText(found.set.parts.size(), "part") + ", " + SizeText(report.bytes);
    const std::size_t faults = report.Faults();
    const bool isCompared = found.set.HasChecksums() || files > 0;
    return what + ", " + TimeText(seconds) + ": " +
           (faults > 0   ? CountText(faults, "fault")
            : isCompared ? std::string("all right")
                         : std::string("all there, without checksums"));
}

bool CheckFoundSet(const FoundSet& found, const CheckOptions& options, const Workplace& place) {
    const auto begun = std::chrono::steady_clock::now();
    const SetReport report = CheckSet(found, "checking", place);
    if (report.isInterrupted) {
        return false;
    }
    for (const Finding& finding : report.findings) {
        if (finding.isFault || !options.quiet) {
            place.console.Line(found.folder.At(finding.name).shown + ": " + finding.text);
        }
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
    place.console.Summary(SummaryOf(found, report, taken.count()));
    return report.Faults() == 0;
}

}  // namespace

bool RunCheck(const CheckOptions& options, const Workplace& place) {
    return ForEachSet(options.files, place,
                      [&](const FoundSet& found) { return CheckFoundSet(found, options, place); });
}

}  // namespace zarn
