#include "faults/FaultJob.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <regex>
#include <sstream>

#include "platform/linux/LinuxPlatform.h"
#include "runtime/Text.h"
#include "settings/SharedObjects.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

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

// '@' in an argument stands for the folder.
std::string InFolder(const TestFolder& folder, const std::string& argument) {
    return Replace(argument, "@", folder.Drive());
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
    const std::vector<std::string> split = {R"(/F=@\IN\DATA.BIN)", R"(/D=@\PARTS)", "/PN=3",
                                            job.Has(Job::DeletesParts) ? "/DP" : ""};
    EXPECT_EQ(RunWatched({"", Road::Split, split}, folder, {}).message, "");
    if (!job.Has(Job::OverNothing)) {
        folder.Write("PARTS/DATA.BIN", "an older result");
        folder.Write("DEST/DATA.BIN", "an older result elsewhere");
    }
    folder.Write("PARTS/DATA.BIN_Part0.sfv", "checksums");
    folder.Write("PARTS/DATA.BIN_Part1.bak", "somebody's copy");
    folder.Write("DEST/NOTE.TXT", "a note");
    if (!job.Has(Job::Cancelled) && job.arguments.size() > 1) {
        const std::string script = InFolder(folder, job.arguments[0]);
        const std::string target = "\"" + InFolder(folder, job.arguments[1]) + "\"";
        folder.Write("PARTS/DATA.BIN_Part0_TMP.bat",
                     folder.Read("PARTS/DATA.BIN_Part0.bat") + "Del " + target + "\r\nMove \"" +
                         script.substr(0, script.find("_Part0")) + "\" " + target + "\r\n");
    }
    RestoreSnapshot(folder.System("IN"), {});
}

}  // namespace

const std::vector<Job>& Jobs() {
    using Words = std::vector<std::string>;
    static const Words split = {R"(/F=@\IN\DATA.BIN)", R"(/D=@\OUT)", "/PN=3"};
    static const Words bySize = {split[0], split[1], "/PS=0.0078125MB"};
    const auto with = [](Words words) {
        words.insert(words.begin(), split.begin(), split.end());
        return words;
    };
    static const Words sfv = {R"(@\IN\DATA.BIN)", R"(@\OUT\)"};
    static const Words join = {R"(@\PARTS\DATA.BIN_Part0.bat)"};
    static const Words move = {R"(@\PARTS\DATA.BIN_Part0_TMP.bat)", R"(@\DEST\DATA.BIN)"};
    static const std::vector<Job> jobs = {
        {"Split", Road::Split, with({"/DP"})},
        {"SplitThroughABuffer", Road::Split, bySize, "buffered", {Job::OverEarlier}},
        {"SplitOfSharedBlocks", Road::Split, split, "shares", {Job::DeletesSource}},
        {"SplitThatDeletes", Road::Split, with({"/DS"}), "", {Job::DeletesAlways}},
        {"Compressed", Road::Split, with({"/C", "/CL=5"}), "replaces", {Job::Compressed}},
        {"EncryptedThatDeletes",
         Road::Split,
         with({"/C", "/CL=5"}),
         "",
         {Job::Compressed, Job::Encrypted, Job::DeletesSource, Job::OverEarlier}},
        {"Sfv", Road::Sfv, sfv},
        {"SfvThatDeletes", Road::Sfv, sfv, "buffered", {Job::DeletesSource, Job::OverEarlier}},
        {"Join", Road::Join, join},
        {"JoinThatDeletes", Road::Join, join, "buffered", {Job::DeletesParts}},
        {"JoinThatMoves", Road::Join, move, "shares", {Job::Moves}},
        {"JoinThatMovesByLink", Road::Join, move, "replaces", {Job::Moves, Job::OverNothing}},
        {"JoinThatMovesAcross", Road::Join, move, "split", {Job::DeletesParts, Job::Moves}},
        {"Settings", Road::Settings, with({"/DP", "/TEST"})},
    };
    return jobs;
}

bool WantsAll() {
    const char* value = std::getenv("ZARN_FAULTS");
    return value != nullptr && std::string(value) == "all";
}

const std::string& Content() {
    static const std::string content =
        TestBytes(9000) + std::string(2011, '-') + TestBytes(9000).substr(3);
    return content;
}

void PrintTo(const Job& job, std::ostream* stream) {
    *stream << job.name;
}

void Prepare(const Job& job, const TestFolder& folder) {
    folder.MakeFolder("tmp");
    folder.MakeFolder("IN");
    folder.Write("IN/DATA.BIN", Content());
    StoreSettings(job, folder);
    (job.road == Road::Join ? PrepareJoin : PrepareSplit)(job, folder);
}

WatchedRun RunWatched(const Job& job, const TestFolder& folder, const Fault& fault) {
    static const std::map<Road, std::string> programs = {{Road::Split, "ZarnFileSplitter"},
                                                         {Road::Sfv, "ZarnSfvJob"},
                                                         {Road::Join, "ZarnScript"},
                                                         {Road::Settings, "ZarnFileSplitter"}};
    const TestFolder notes;
    notes.Write("log", "");
    std::vector<std::string> arguments;
    for (const std::string& argument : job.arguments) {
        arguments.push_back(InFolder(folder, argument));
    }
    const ProgramResult program =
        RunProgram(job.Has(Job::Cancelled) ? "ZarnSfvJob" : programs.at(job.road), arguments,
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
    FileOperation operation;
    while (log >> operation.call && log.get() != EOF && std::getline(log, operation.path)) {
        if (operation.call == "left") {
            run.open.push_back(operation.path);
        } else if (operation.call == "to") {
            run.operations.back().to = operation.path;
        } else if (operation.call == "failed") {
            run.operations.back().failed = true;
        } else {
            run.operations.push_back(operation);
        }
    }
    if (fault.number > 0 && fault.number <= run.operations.size()) {
        run.struck = run.operations[fault.number - 1];
    }
    return run;
}

}  // namespace zarn::testing
