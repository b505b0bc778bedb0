#include "faults/FaultJob.h"

#include <csignal>
#include <regex>
#include <sstream>

#include "platform/linux/LinuxPlatform.h"
#include "settings/SharedObjects.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

Names ArgumentsIn(const TestFolder& folder, const Job& job) {
    return Split(
        Replace(job.arguments, "@", job.Has(Job::Native) ? folder.System() : folder.Drive()), " ");
}

void StoreSettings(const Job& job, const TestFolder& folder) {
    SharedObjects shared(
        MakeLinuxPlatform({folder.System("config/ZarnFileSplitter"), folder.System("cache"), {}}));
    Parameters& parameters = shared.Parameters();
    parameters.TemporaryFolder(folder.Drive("tmp") + (job.Has(Job::NoBackslash) ? "" : "\\"));
    parameters.DeleteSource(job.Has(Job::Deletes) ? 1 : 0);
    StoredValue yes = 1;
    parameters.DeleteSplitParts(yes);
    parameters.CompressDestination(1);
    parameters.CompressPasswordProtect(job.Has(Job::Encrypted) ? 1 : 0);
    parameters.CompressPassword(Password);
}

void PrepareSplit(const Job& job, const TestFolder& folder) {
    folder.Write("IN/NOTE.TXT", "a note");
    if (job.Has(Job::OverEarlier) || job.road == Road::Sfv || job.Has(Job::Native)) {
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
    const std::string cut = R"(/F=@\IN\DATA.BIN /D=@\PARTS /PN=3)";
    const std::string deletes = job.Has(Job::DeletesParts) ? " /DP" : "";
    EXPECT_EQ(RunWatched({"", Road::Split, cut + deletes, {}}, folder, {}).message, "");
    if (!job.Has(Job::OverNothing)) {
        folder.Write("PARTS/DATA.BIN", "an older result");
        folder.Write("DEST/DATA.BIN", "an older result elsewhere");
    }
    if (job.Has(Job::Native)) {
        const std::string again = "split -qfn3 --sfv -o @/PARTS @/IN/DATA.BIN";
        EXPECT_EQ(RunWatched({"", Road::Split, again, {Job::Native}}, folder, {}).message, "");
    } else {
        folder.Write("PARTS/DATA.BIN_Part0.sfv", "checksums");
    }
    folder.Write("PARTS/DATA.BIN_Part1.bak", "somebody's copy");
    folder.Write("DEST/NOTE.TXT", "a note");
    const Names words = ArgumentsIn(folder, job);
    if (!job.Has(Job::Cancelled) && words.size() > 1) {
        const std::string built = words[0].substr(0, words[0].find("_Part0"));
        const std::string move = "Del " + Quoted(words[1]) + "\r\nMove " + Quoted(built) + " ";
        folder.Write("PARTS/DATA.BIN_Part0_TMP.bat",
                     folder.Read("PARTS/DATA.BIN_Part0.bat") + move + Quoted(words[1]) + "\r\n");
    }
    RestoreSnapshot(folder.System("IN"), {});
}

}  // namespace

std::vector<Job> JobsWithout(Job::Trait trait) {
    using enum Job::Trait;
    const std::string cut = R"(/F=@\IN\DATA.BIN /D=@\OUT )";
    const std::string packed = cut + "/PN=3 /C /CL=5";
    const std::string sfv = R"(@\IN\DATA.BIN @\OUT\)";
    const std::string join = R"(@\PARTS\DATA.BIN_Part0.bat)";
    const std::string move = R"(@\PARTS\DATA.BIN_Part0_TMP.bat @\DEST\DATA.BIN)";
    const std::string home = R"(@\PARTS\DATA.BIN_Part0_TMP.bat @\PARTS\DATA.BIN)";
    const std::string stop = join + R"( @\DEST\DATA.BIN join)";
    const std::string zarn = "split -qfn3 --sfv -o @/OUT @/IN/DATA.BIN";
    const std::string away = "join -qf -o @/DEST --delete-parts @/PARTS/DATA.BIN_Part0.bat";
    const auto [split, window, script] = std::tuple(Road::Split, Road::Sfv, Road::Join);
    const std::set<Job::Trait> beside = {NamesOnly, Compressed, Deletes, OverEarlier, NoBackslash};
    std::vector<Job> jobs = {
        {"Split", split, cut + "/PN=3 /DP", {}},
        {"SplitThroughABuffer", split, cut + "/PS=0.0078125MB", {OverEarlier}, "buffered"},
        {"SplitOfSharedBlocks", split, cut + "/PN=3", {Deletes}, "shares"},
        {"SplitThatDeletes", split, cut + "/PN=3 /DS", {DeletesAlways}},
        {"Compressed", split, packed, {Compressed}, "replaces"},
        {"CompressedThatDeletes", split, packed + " /DS", {NamesOnly, Compressed, DeletesAlways}},
        {"CompressedWithoutBackslash", split, packed + " /DS", beside, "replaces"},
        {"EncryptedThatDeletes", split, packed, {Compressed, Encrypted, Deletes, OverEarlier}},
        {"CancelledSplit", window, sfv + " split", {NamesOnly, Cancelled}},
        {"CancelledSplitThatDeletes", window, sfv + " split", {NamesOnly, Cancelled, Deletes}},
        {"Sfv", window, sfv, {}},
        {"SfvThatDeletes", window, sfv, {Deletes, OverEarlier}, "buffered"},
        {"Join", script, join, {}},
        {"JoinThatDeletes", script, join, {DeletesParts}, "buffered"},
        {"JoinThatMoves", script, move, {Moves}, "shares"},
        {"JoinThatMovesAcross", script, move, {DeletesParts, Moves}, "split"},
        {"JoinThatMovesHome", script, home, {NamesOnly, DeletesParts}},
        {"JoinThatMovesByLink", script, move, {Moves, OverNothing}, "replaces"},
        {"JoinThatMovesWithoutLinks", script, move, {NamesOnly, Moves, OverNothing}, "no links"},
        {"CancelledJoin", script, stop, {NamesOnly, Cancelled, Moves}},
        {"CancelledJoinThatDeletes", script, stop, {NamesOnly, Cancelled, Moves, DeletesParts}},
        {"Zarn", split, zarn, {Native, OverEarlier}, "buffered"},
        {"ZarnThatDeletes", split, zarn + " --delete-source", {Native, Deletes}, "shares"},
        {"ZarnJoin", script, "join -qf @/PARTS/DATA.BIN_Part2", {Native}},
        {"ZarnJoinThatMoves", script, away, {Native, Moves, DeletesParts}, "buffered"},
        {"Settings", split, cut + "/PN=3 /DP /TEST", {ChecksOnly}},
    };
    std::erase_if(jobs, [&](const Job& job) {
        return job.Has(trait) || (trait == ChecksOnly && job.Has(Native));
    });
    return jobs;
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
        RunProgram(job.Has(Job::Native)                               ? "zarn"
                   : job.road == Road::Sfv || job.Has(Job::Cancelled) ? "ZarnSfvJob"
                   : job.IsJoin()                                     ? "ZarnScript"
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
