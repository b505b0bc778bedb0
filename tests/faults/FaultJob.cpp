#include "faults/FaultJob.h"

#include <csignal>
#include <regex>
#include <sstream>

#include "platform/linux/LinuxPlatform.h"
#include "settings/SharedObjects.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

constexpr const char* Script = R"(@\PARTS\DATA.BIN_Part0.bat)";
constexpr const char* Move = R"(@\PARTS\DATA.BIN_Part0_TMP.bat @\DEST\DATA.BIN)";
constexpr const char* MoveHome = R"(@\PARTS\DATA.BIN_Part0_TMP.bat @\PARTS\DATA.BIN)";
constexpr const char* Sfv = R"(@\IN\DATA.BIN @\OUT\)";
constexpr const char* CancelSplit = R"(@\IN\DATA.BIN @\OUT\ split)";
constexpr const char* CancelJoin = R"(@\PARTS\DATA.BIN_Part0.bat @\DEST\DATA.BIN join)";

std::string SplitWith(const std::string& switches) {
    return R"(/F=@\IN\DATA.BIN /D=@\OUT )" + switches;
}

Names ArgumentsIn(const TestFolder& folder, const Job& job) {
    return Split(Replace(job.arguments, "@", folder.Drive()), " ");
}

void StoreSettings(const Job& job, const TestFolder& folder) {
    SharedObjects shared(
        MakeLinuxPlatform({folder.System("config/ZarnFileSplitter"), folder.System("cache"), {}}));
    Parameters& parameters = shared.Parameters();
    parameters.TemporaryFolder(folder.Drive("tmp") + (job.Has(Job::NoBackslash) ? "" : "\\"));
    parameters.DeleteSource(job.Has(Job::DeletesSource) ? 1 : 0);
    StoredValue deletesParts = 1;
    parameters.DeleteSplitParts(deletesParts);
    parameters.CompressDestination(1);
    parameters.CompressPasswordProtect(job.Has(Job::Encrypted) ? 1 : 0);
    parameters.CompressPassword(Password);
}

void PrepareSplit(const Job& job, const TestFolder& folder) {
    folder.Write("IN/NOTE.TXT", "a note");
    if (job.Has(Job::OverEarlier) || job.road == Road::Sfv) {
        folder.MakeFolder("OUT");
    }
    if (job.Has(Job::OverEarlier)) {
        for (const char* ending : {"1", "2", "3", "4", "0.bat", "0.sfv"}) {
            folder.Write("OUT/" + job.Stem() + "_Part" + ending, std::string("older ") + ending);
        }
        folder.Write("OUT/OTHER.BIN_Part1", "of another file");
        folder.Write("tmp/" + job.Stem(), "an older archive");
    }
}

void PrepareJoin(const Job& job, const TestFolder& folder) {
    folder.MakeFolder("DEST");
    const std::string split = R"(/F=@\IN\DATA.BIN /D=@\PARTS /PN=3)";
    const Job cut = {"", Road::Split, split + (job.Has(Job::DeletesParts) ? " /DP" : ""), "", {}};
    EXPECT_EQ(RunWatched(cut, folder, {}).message, "");
    if (!job.Has(Job::OverNothing)) {
        folder.Write("PARTS/DATA.BIN", "an older result");
        folder.Write("DEST/DATA.BIN", "an older result elsewhere");
    }
    folder.Write("PARTS/DATA.BIN_Part0.sfv", "checksums");
    folder.Write("PARTS/DATA.BIN_Part1.bak", "somebody's copy");
    folder.Write("DEST/NOTE.TXT", "a note");
    const Names words = ArgumentsIn(folder, job);
    if (!job.Has(Job::Cancelled) && words.size() > 1) {
        const std::string built = words[0].substr(0, words[0].find("_Part0"));
        folder.Write("PARTS/DATA.BIN_Part0_TMP.bat", folder.Read("PARTS/DATA.BIN_Part0.bat") +
                                                         "Del \"" + words[1] + "\"\r\nMove \"" +
                                                         built + "\" \"" + words[1] + "\"\r\n");
    }
    RestoreSnapshot(folder.System("IN"), {});
}

}  // namespace

std::vector<Job> Jobs() {
    using enum Job::Trait;
    using Traits = std::set<Job::Trait>;
    const std::string packed = SplitWith("/PN=3 /C /CL=5");
    const std::string bySize = SplitWith("/PS=0.0078125MB");
    const char* const noLinks = "replaces, no links";
    const Traits encrypted = {Compressed, Encrypted, DeletesSource, OverEarlier};
    const Traits alone = {NamesOnly, Moves, OverNothing};
    const Traits beside = {NamesOnly, Compressed, DeletesSource, OverEarlier, NoBackslash};
    const Traits all = {NamesOnly, Compressed, DeletesAlways};
    const Traits cancelled = {NamesOnly, Cancelled};
    const Traits noSplit = {NamesOnly, Cancelled, DeletesSource};
    const Traits noMove = {NamesOnly, Cancelled, Moves};
    const Traits noParts = {NamesOnly, Cancelled, Moves, DeletesParts};
    return {
        {"Split", Road::Split, SplitWith("/PN=3 /DP"), "", {}},
        {"SplitThroughABuffer", Road::Split, bySize, "buffered", {OverEarlier}},
        {"SplitOfSharedBlocks", Road::Split, SplitWith("/PN=3"), "shares", {DeletesSource}},
        {"SplitThatDeletes", Road::Split, SplitWith("/PN=3 /DS"), "", {DeletesAlways}},
        {"Compressed", Road::Split, packed, "replaces", {Compressed}},
        {"CompressedThatDeletes", Road::Split, packed + " /DS", "", all},
        {"CompressedWithoutBackslash", Road::Split, packed + " /DS", "replaces", beside},
        {"EncryptedThatDeletes", Road::Split, packed, "", encrypted},
        {"CancelledSplit", Road::Sfv, CancelSplit, "", cancelled},
        {"CancelledSplitThatDeletes", Road::Sfv, CancelSplit, "", noSplit},
        {"Sfv", Road::Sfv, Sfv, "", {}},
        {"SfvThatDeletes", Road::Sfv, Sfv, "buffered", {DeletesSource, OverEarlier}},
        {"Join", Road::Join, Script, "", {}},
        {"JoinThatDeletes", Road::Join, Script, "buffered", {DeletesParts}},
        {"JoinThatMoves", Road::Join, Move, "shares", {Moves}},
        {"JoinThatMovesAcross", Road::Join, Move, "split", {DeletesParts, Moves}},
        {"JoinThatMovesHome", Road::Join, MoveHome, "", {NamesOnly, DeletesParts}},
        {"JoinThatMovesByLink", Road::Join, Move, "replaces", {Moves, OverNothing}},
        {"JoinThatMovesWithoutLinks", Road::Join, Move, noLinks, alone},
        {"CancelledJoin", Road::Join, CancelJoin, "", noMove},
        {"CancelledJoinThatDeletes", Road::Join, CancelJoin, "", noParts},
        {"Settings", Road::Settings, SplitWith("/PN=3 /DP /TEST"), "", {}},
    };
}

const std::string& Content() {
    static const std::string content =
        TestBytes(9000) + std::string(2011, '-') + TestBytes(9000).substr(3);
    return content;
}

void Prepare(const Job& job, const TestFolder& folder) {
    folder.MakeFolder("tmp");
    folder.MakeFolder("IN");
    folder.Write("IN/DATA.BIN", Content());
    StoreSettings(job, folder);
    (job.road == Road::Join ? PrepareJoin : PrepareSplit)(job, folder);
}

WatchedRun RunWatched(const Job& job, const TestFolder& folder, const Fault& fault) {
    const TestFolder notes;
    notes.Write("log", "");
    const ProgramResult program =
        RunProgram(job.road == Road::Sfv || job.Has(Job::Cancelled) ? "ZarnSfvJob"
                   : job.IsJoin()                                   ? "ZarnScript"
                                                                    : "ZarnFileSplitter",
                   ArgumentsIn(folder, job),
                   {{"XDG_CONFIG_HOME", folder.System("config")},
                    {"XDG_CACHE_HOME", folder.System("cache")},
                    {"TMPDIR", folder.System("tmp")},
                    // The sanitizers' layer need not be the first.
                    {"ASAN_OPTIONS", "verify_asan_link_order=0"},
                    // Takes no path that has blanks in it.
                    {"LD_PRELOAD", "libFaultLayer.so"},
                    {"LD_LIBRARY_PATH", ZARN_BINARY_FOLDER},
                    {"ZARN_FAULT_FOLDER", folder.System()},
                    {"ZARN_FAULT_NUMBER", std::to_string(fault.number)},
                    {"ZARN_FAULT_KIND", fault.kind},
                    {"ZARN_FAULT_STAYS", fault.stays ? "1" : ""},
                    {"ZARN_FAULT_FROM", folder.System(fault.from)},
                    {"ZARN_FAULT_TO", folder.System(fault.to)},
                    {"ZARN_FAULT_VIEW", job.view},
                    {"ZARN_FAULT_VOLUME", job.volume},
                    {"ZARN_FAULT_LOG", notes.System("log")}},
                   folder.System(job.current));
    // Settings that cannot be read or kept are told, and the job goes on without them.
    static const std::regex notices("Zarn File Splitter cannot (read|write) [^\n]*\n");
    WatchedRun run = {program.status, std::regex_replace(program.error, notices, ""),
                      program.status == 128 + SIGALRM, program.status == 128 + SIGKILL};
    std::istringstream log(Replace(notes.Read("log"), folder.System() + "/", ""));
    FileOperation next;
    while (log >> next.call && log.get() != EOF && std::getline(log, next.path)) {
        if (next.call == "left") {
            run.open.push_back(next.path);
        } else if (next.call == "to") {
            run.operations.back().to = next.path;
        } else if (next.call == "failed") {
            run.operations.back().failed = true;
        } else {
            run.operations.push_back(next);
        }
    }
    if (fault.number > 0 && fault.number <= run.operations.size()) {
        run.struck = run.operations[fault.number - 1];
    }
    return run;
}

}  // namespace zarn::testing
