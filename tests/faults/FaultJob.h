#pragma once

#include <unistd.h>

#include <set>

#include "support/Prelude.h"
#include "support/Snapshot.h"

namespace zarn::testing {

enum class Road { Split, Sfv, Join };

/// A job of one of the programs, in a folder of its own: `IN/DATA.BIN` is split into three parts in
/// `OUT`, or the parts in `PARTS` are joined.
struct Job {
    enum Trait {
        Compressed,
        Encrypted,
        Deletes,        ///< the source, by the setting
        DeletesAlways,  ///< the same by `/DS`, however the run ended
        OverEarlier,    ///< parts and script of an earlier job are there
        OverNothing,    ///< no older result of a join is there
        DeletesParts,   ///< a join's script does
        Moves,          ///< a join's result, to `DEST`
        Cancelled,
        NoBackslash,  ///< behind the temporary folder: the archive has to be moved into it
        Native,       ///< a job of `zarn`; no identity sweep is made for those
        NamesOnly,    ///< runs in the identity sweep alone
        ChecksOnly    ///< the command line, and cuts nothing
    };

    std::string name;
    Road road = Road::Split;
    std::string arguments;     ///< '@' stands for the folder
    std::set<Trait> traits;    ///< what else there is to know
    std::string volume = {};   ///< what the volume is like
    std::string view = {};     ///< another path of the folder, which the arguments may have
    std::string current = {};  ///< the folder in it in which the program starts

    [[nodiscard]] bool IsJoin() const { return road == Road::Join; }
    [[nodiscard]] bool Has(Trait trait) const { return traits.contains(trait); }
    /// The name of what is cut, as the parts carry it.
    [[nodiscard]] std::string Stem() const {
        return Has(NoBackslash) ? "tmpDATA.zip" : Has(Compressed) ? "DATA.zip" : "DATA.BIN";
    }
};

[[nodiscard]] std::vector<Job> JobsWithout(Job::Trait trait);

/// Where a job's folder is made: nothing has to reach a disk.
[[nodiscard]] inline TestFolder FolderInMemory() {
    return access("/dev/shm", W_OK) == 0 ? TestFolder("/dev/shm") : TestFolder();
}

/// The bytes of `IN/DATA.BIN`, before and behind.
[[nodiscard]] const std::string& Content();

/// The password of the archives of encrypting jobs.
constexpr const char* Password = "Qv-secret";

/// Fills an empty folder with what a job begins with.
void Prepare(const Job& job, const TestFolder& folder);

/// What the file layer (`FaultLayer.cpp` tells the words) does to a run; nothing, as it stands.
struct Fault {
    std::size_t number = 0;
    std::string kind = {};
    bool stays = false;
    std::string from = {};  ///< what somebody else moves, in the folder
    std::string to = {};    ///< and where to
};

struct FileOperation {
    std::string call;
    std::string path;     ///< in the watched folder, or absolute
    std::string to = {};  ///< the path that a file gets by it
    bool failed = false;
};

struct WatchedRun {
    int status = 0;
    std::string message;
    bool hung = false;    ///< ended by the watchdog
    bool killed = false;  ///< by the fault
    std::vector<FileOperation> operations = {};
    FileOperation struck = {};  ///< the one that the fault met, if it met one
    Names open = {};            ///< files that were open at the end
};

/// Runs a job over the file layer. Its program's settings, cache and temporary folder are `config`,
/// `cache` and `tmp` in the folder.
[[nodiscard]] WatchedRun RunWatched(const Job& job, const TestFolder& folder, const Fault& fault);

}  // namespace zarn::testing
