#include "faults/FaultJob.h"

#include <gtest/gtest.h>

#include "platform/linux/LinuxPlatform.h"
#include "runtime/Text.h"
#include "settings/SharedObjects.h"

namespace zarn::testing {

namespace {

std::vector<Job> MakeJobs() {
    const std::string splitter = "ZarnFileSplitter";
    const std::string source = R"(/F=@\IN\DATA.BIN)";
    const std::string out = R"(/D=@\OUT)";
    const std::string script = R"(@\PARTS\DATA.BIN_Part0.bat)";
    const std::string copy = R"(@\PARTS\DATA.BIN_Part0_TMP.bat)";
    const std::string target = R"(@\DEST\DATA.BIN)";
    const std::vector<std::string> sfv = {R"(@\IN\DATA.BIN)", R"(@\OUT\)", "3"};
    std::vector<Job> jobs = {
        {"Split", Road::Split, {splitter, {source, out, "/PN=3", "/DP"}, ""}},
        {"SplitThroughABuffer", Road::Split, {splitter, {source, out, "/PN=3"}, "buffered"}},
        {"SplitOfSharedBlocks", Road::Split, {splitter, {source, out, "/PN=3"}, "shares"}},
        {"SplitThatDeletes", Road::Split, {splitter, {source, out, "/PN=3", "/DS"}, ""}},
        {"Compressed", Road::Split, {splitter, {source, out, "/PN=3", "/C", "/CL=5"}, ""}},
        {"EncryptedThatDeletes",
         Road::Split,
         {splitter, {source, out, "/PN=3", "/C", "/CL=5"}, ""}},
        {"Sfv", Road::Sfv, {"ZarnSfvJob", sfv, ""}},
        {"SfvThatDeletes", Road::Sfv, {"ZarnSfvJob", sfv, "buffered"}},
        {"Join", Road::Join, {"ZarnScript", {script}, ""}},
        {"JoinThatDeletes", Road::Join, {"ZarnScript", {script}, "buffered"}},
        {"JoinThatMoves", Road::Join, {"ZarnScript", {copy, target}, "shares"}},
        {"JoinThatMovesAcross", Road::Join, {"ZarnScript", {copy, target}, "split"}},
        {"Settings", Road::Settings, {splitter, {source, out, "/PN=3", "/DP", "/TEST"}, ""}},
    };
    for (Job& job : jobs) {
        const std::string& name = job.name;
        job.encrypted = name == "EncryptedThatDeletes";
        job.compressed = name == "Compressed" || job.encrypted;
        job.deletesAlways = name == "SplitThatDeletes";
        job.deletesSource = name == "SplitOfSharedBlocks" || name == "EncryptedThatDeletes" ||
                            name == "SfvThatDeletes";
        job.overEarlier = name == "SplitThroughABuffer" || name == "EncryptedThatDeletes" ||
                          name == "SfvThatDeletes";
        job.deletesParts = name == "JoinThatDeletes" || name == "JoinThatMovesAcross";
        job.moves = name.starts_with("JoinThatMoves");
    }
    return jobs;
}

void StoreSettings(const Job& job, const TestFolder& folder) {
    SharedObjects shared(MakeLinuxPlatform(
        {folder.System("config/ZarnFileSplitter"), folder.System("cache"), folder.System("tmp")}));
    Parameters& parameters = shared.Parameters();
    parameters.TemporaryFolder(folder.Drive("tmp") + "\\");
    parameters.DeleteSource(job.deletesSource ? 1 : 0);
    StoredValue deletesParts = 1;
    parameters.DeleteSplitParts(deletesParts);
    parameters.CompressDestination(1);
    parameters.CompressPasswordProtect(job.encrypted ? 1 : 0);
    parameters.CompressPassword(Password);
}

void PrepareSplit(const Job& job, const TestFolder& folder) {
    folder.MakeFolder("IN");
    folder.Write("IN/DATA.BIN", Content());
    folder.Write("IN/NOTE.TXT", "a note");
    if (job.overEarlier || job.road == Road::Sfv) {
        folder.MakeFolder("OUT");
    }
    if (job.overEarlier) {
        for (const char* ending : {"1", "2", "3", "4", "0.bat", "0.sfv"}) {
            folder.Write("OUT/" + job.Stem() + "_Part" + ending, std::string("older ") + ending);
        }
        folder.Write("OUT/OTHER.BIN_Part1", "of another file");
        folder.Write("tmp/" + job.Stem(), "an older archive");
    }
}

void PrepareJoin(const Job& job, const TestFolder& folder) {
    folder.MakeFolder("IN");
    folder.MakeFolder("DEST");
    folder.Write("IN/DATA.BIN", Content());
    WatchedProgram split = {
        "ZarnFileSplitter", {R"(/F=@\IN\DATA.BIN)", R"(/D=@\PARTS)", "/PN=3"}, {}};
    if (job.deletesParts) {
        split.arguments.emplace_back("/DP");
    }
    const Job before = {"", Road::Split, split};
    EXPECT_EQ(RunWatched(before.In(folder), folder.System(), {}).program.error, "");
    folder.Write("PARTS/DATA.BIN", "an older result");
    folder.Write("PARTS/DATA.BIN_Part0.sfv", "checksums");
    folder.Write("PARTS/DATA.BIN_Part1.bak", "somebody's copy");
    folder.Write("DEST/DATA.BIN", "an older result elsewhere");
    folder.Write("DEST/NOTE.TXT", "a note");
    if (job.moves) {
        const std::string target = "\"" + folder.Drive("DEST/DATA.BIN") + "\"";
        folder.Write("PARTS/DATA.BIN_Part0_TMP.bat",
                     folder.Read("PARTS/DATA.BIN_Part0.bat") + "Del " + target + "\r\nMove \"" +
                         folder.Drive("PARTS/DATA.BIN") + "\" " + target + "\r\n");
    }
    RestoreSnapshot(folder.System("IN"), {});
}

}  // namespace

WatchedProgram Job::In(const TestFolder& folder) const {
    WatchedProgram result = program;
    for (std::string& argument : result.arguments) {
        argument = Replace(argument, "@", folder.Drive());
    }
    return result;
}

const std::vector<Job>& Jobs() {
    static const std::vector<Job> jobs = MakeJobs();
    return jobs;
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
    StoreSettings(job, folder);
    if (job.road == Road::Join) {
        PrepareJoin(job, folder);
    } else {
        PrepareSplit(job, folder);
    }
}

}  // namespace zarn::testing
