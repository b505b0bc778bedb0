#include "faults/Verdict.h"

#include <regex>
#include <span>

#include "scripts/Crc32.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

using Words = std::set<std::string>;

constexpr const char* Source = "IN/DATA.BIN";
constexpr const char* Beside = "PARTS/DATA.BIN";
constexpr const char* Elsewhere = "DEST/DATA.BIN";

bool Matches(const std::string& text, const std::string& pattern) {
    return std::regex_match(text, std::regex(pattern));
}

// A file's bytes, or nothing that any file has.
const std::string& BytesOf(const Snapshot& files, const std::string& path) {
    static const std::string none = "(no such file)";
    const auto found = files.find(path);
    return found == files.end() ? none : found->second;
}

bool IsSource(const std::string& path) {
    return UpperCase(path) == Source;
}

// The file in an archive; nothing that any file has if it is not whole.
std::string Unpack(const std::string& archive) {
    const TestFolder folder;
    folder.Write("a.zip", archive);
    const ProgramResult unpacked = RunProgram(
        "/usr/bin/7z", {"e", "-so", std::string("-p") + Password, folder.System("a.zip")});
    return unpacked.status == 0 ? unpacked.output : "(no archive)";
}

// The names under which the programs build a file. A run that was killed, or whose deletion was
// refused, leaves them; they are in nobody's way.
bool IsUnfinished(const std::string& path) {
    return Matches(path, R"(.*/(\.zarn-|settings\.reg\.new-)\w{6}(\.\w{6})?|tmp/zarn-\w{6}/|)"
                         R"((DEST|PARTS)/Zarn-1\.TMP)");
}

std::string FirstOf(const Names& complaints) {
    const auto found = std::ranges::find_if_not(complaints, &std::string::empty);
    return found == complaints.end() ? std::string() : *found;
}

struct Judge : Evidence {
    [[nodiscard]] bool Has(Job::Trait trait) const { return job.Has(trait); }

    // The operation that was struck is one of these calls, or one on such a path.
    [[nodiscard]] bool Struck(const Words& calls) const { return calls.contains(run.struck.call); }
    [[nodiscard]] bool At(const char* pattern) const { return Matches(run.struck.path, pattern); }

    [[nodiscard]] std::string Part(const std::string& ending) const {
        return (job.IsJoin() ? "PARTS/" : "OUT/") + job.Stem() + "_Part" + ending;
    }

    // Where an archive of that name is somebody's, the job's own gets a folder.
    [[nodiscard]] bool IsArchive(const std::string& path) const {
        return Has(Job::Compressed) && Matches(path, R"(tmp/(zarn-\w{6}/(.*/)?)?)" + job.Stem());
    }

    // The parts hold these bytes, in the order in which the script's commands join them.
    [[nodiscard]] bool PartsHold(const Snapshot& files, const std::string& bytes) const {
        static const std::regex copy(R"re(Copy (?:/b Zarn\.TMP \+ )?"([^"]+)" Zarn\.TMP\r\n)re");
        std::string script = BytesOf(files, Part("0.bat"));
        std::string joined;
        for (std::smatch next; std::regex_search(script, next, copy); script = next.suffix()) {
            joined += BytesOf(files, "OUT/" + next[1].str());
        }
        return (Has(Job::Compressed) ? Unpack(joined) : joined) == bytes;
    }

    [[nodiscard]] std::string JoinedParts(const Snapshot& files) const {
        return BytesOf(files, Part("1")) + BytesOf(files, Part("2")) + BytesOf(files, Part("3"));
    }

    // A file that a job may make, replace or delete.
    [[nodiscard]] bool IsOfJob(const std::string& path) const {
        const std::string stem = Part("");
        const std::string ending = path.starts_with(stem) ? path.substr(stem.size()) : "";
        if (job.IsJoin()) {
            return Matches(path, "(config|cache)/.*|PARTS/(DATA\\.BIN|Zarn\\.TMP)") ||
                   (Has(Job::Cancelled) && ending == "0_TMP.bat") ||
                   (Has(Job::DeletesParts) && Matches(ending, R"(1|2|3|0(_TMP)?\.bat|0\.sfv)")) ||
                   (Has(Job::Moves) && (path == Elsewhere || path == "DEST/Zarn.TMP"));
        }
        return Matches(path, "(config|cache)/.*|OUT/") || Matches(ending, R"(1|2|3|0\.bat)") ||
               (Has(Job::Native) && Has(Job::OverEarlier) && ending == "4") || IsArchive(path) ||
               ((job.road == Road::Sfv || Has(Job::Native)) && ending == "0.sfv") ||
               (IsSource(path) && (Has(Job::Deletes) || Has(Job::DeletesAlways)));
    }

    [[nodiscard]] std::string Others() const {
        const bool mayLeave = run.killed || !fault.to.empty() || fault.stays ||
                              Struck({"delete"}) || IsUnfinished(run.struck.path);
        for (const auto& [path, bytes] : before) {
            // An archive that was there is not the job's own.
            if ((!IsOfJob(path) || path == "tmp/" + job.Stem()) && BytesOf(after, path) != bytes) {
                return "lost or changed: " + path;
            }
        }
        for (const auto& [path, bytes] : after) {
            if (!before.contains(path) && !IsOfJob(path) &&
                !(IsUnfinished(path) && (mayLeave || after.contains(path + job.Stem())))) {
                return "left behind: " + path;
            }
        }
        return {};
    }

    // The store is written whole. Every value in it is the one before, the one behind the run, or
    // one on the way (a setting that is put back at the end, or a default where a folder denied
    // it).
    [[nodiscard]] std::string Store() const {
        const std::string path = "config/ZarnFileSplitter/settings.reg";
        const std::string& store = BytesOf(after, path);
        const std::string& old = BytesOf(before, path);
        if (!store.starts_with("; Zarn File Splitter settings\n") || !store.ends_with('\n')) {
            return "torn store:\n" + store;
        }
        for (const std::string& line : Split(old, "\n")) {
            if (!Contains(store, line.substr(0, line.find('=')))) {
                return "the store has lost " + line;
            }
        }
        const std::string known = "\n" + old + "\n" + BytesOf(clean, path);
        const bool denied = fault.kind == "ENOENT" && At("config.*");
        for (const std::string& line : Split(store, "\n")) {
            if (!Contains(known, "\n" + line + "\n") && !denied &&
                !line.starts_with("\"Delete Split Parts\"=dword:0000000")) {
                return "the store has a value of nobody's: " + line;
            }
        }
        return {};
    }

    // Bytes of the job's own may be missing. The end of a file that was only read says nothing.
    [[nodiscard]] bool StrikesOutput() const {
        const Words moves = {"create", "write", "copy", "flush", "sync"};
        // Joins give a file such a name only to delete it, and do without if they cannot.
        const bool isNameAlone =
            (job.IsJoin() || (Has(Job::Native) && !Struck({"write"}))) && At(R"(.*/\.zarn-.*)");
        const bool closes = Struck({"close"}) && !Has(Job::Native) &&
                            (At(R"(OUT/\.zarn-.*|(DEST|PARTS)/Zarn.*)") ||
                             (job.road == Road::Split && At("OUT/.*_Part[1-9]")));
        return fault.kind.starts_with('E') && fault.kind != "EINTR" &&
               (closes || (Struck(moves) && !isNameAlone && At("(OUT|DEST|PARTS)(/.*)?")));
    }

    // The rest of a short count, or what a signal can break off, has only to be done again; but the
    // ZIP library, which writes under a longer name than it is given, does not. The programs handle
    // no signal, so that none can.
    [[nodiscard]] bool CanBeRepeated() const {
        const bool broken =
            fault.kind == "EINTR" && Struck({"open", "create", "read", "write", "copy", "share",
                                             "flush", "sync", "close", "statfs", "space", "lock"});
        return (broken || fault.kind == "half") &&
               !At(R"(tmp/(zarn-\w{6}/)?\.zarn-\w{6}(\.\w{6})?)");
    }

    // What `zarn` has made of a job that failed is deleted, as far as the fault lets it.
    [[nodiscard]] std::string HalfMade() const {
        // A part whose new file does not say what it is stays, empty.
        const bool mayLeave = run.killed || fault.stays || Struck({"delete", "rename", "stat"});
        const bool isSplit = Has(Job::Native) && !job.IsJoin();
        const bool isLeft = std::ranges::any_of(after, [&](const auto& file) {
            return file.first.starts_with("OUT/DATA") && BytesOf(before, file.first) != file.second;
        });
        return isSplit && !mayLeave && isLeft && !PartsHold(after, Content()) ? "half-made" : "";
    }

    [[nodiscard]] std::string End() const {
        const bool done = SaysDone(job, run);
        const bool fails = (job.IsJoin() || Has(Job::Native)) && !run.message.empty();
        return run.hung                     ? "hung"
               : run.killed                 ? ""
               : !run.open.empty()          ? "left open: " + run.open.front()
               : (run.status != 0) != fails ? "status " + std::to_string(run.status)
               : StrikesOutput() && done    ? "nobody says that it failed"
               : CanBeRepeated() && !done   ? "seen from outside"
                                            : "";
    }

    // What may be all that holds the user's bytes.
    [[nodiscard]] bool IsLastCopy(const std::string& path) const {
        return job.IsJoin() ? path == Beside || (path.starts_with(Part("")) &&
                                                 !Matches(path, ".*(bak|TMP\\.bat)"))
                            : IsSource(path) || (Has(Job::Deletes) && IsArchive(path));
    }

    // Nothing that holds the user's bytes goes before what replaces it is on the disk under its
    // name, nor is an older file replaced by one whose bytes are not there yet, nor one that was in
    // the way of a rename.
    [[nodiscard]] std::string Order() const {
        std::map<std::string, bool> unsafe;         // what was written; true before a flush
        std::map<std::string, std::string> copies;  // under other names, by those
        std::set<std::pair<std::string, std::string>> refused;  // names, because they are taken
        std::size_t number = 0;
        for (const auto& [call, path, to, failed] : run.operations) {
            ++number;
            if (failed) {
                refused.emplace(path, to);
            } else if (Words{"write", "copy", "share"}.contains(call)) {
                unsafe[path] = true;
            } else if (call == "flush" && unsafe.contains(path)) {
                unsafe[path] = false;
            } else if (call == "sync") {
                std::erase_if(unsafe, [&, &from = path](const auto& file) {
                    return from.starts_with('/') || file.first.starts_with(from + "/");
                });
            } else if (!to.empty()) {
                if (number > fault.number && fault.to == to && refused.contains({path, to})) {
                    return "replaced: " + to;
                }
                const bool isStore = path.starts_with("config/");
                // What somebody puts there in mid-run is no older file.
                const bool isPrecious = isStore || (job.IsJoin() && to != fault.to);
                auto file = unsafe.extract(path);
                if (!file.empty() && file.mapped() && isPrecious && before.contains(to)) {
                    return "replaced before a flush: " + to;
                }
                if (!file.empty() && !isStore) {
                    unsafe[to] = file.mapped();
                }
                const auto copy = copies.extract(path);
                if (!copy.empty() || IsLastCopy(path)) {
                    copies[to] = copy.empty() ? path : copy.mapped();
                }
            } else if (call == "delete") {
                unsafe.erase(path);
                const bool hasOther =
                    std::ranges::count(copies, path, &Snapshot::value_type::second) > 0;
                const bool isCopy = (IsLastCopy(path) && !hasOther) || copies.erase(path) > 0;
                if (isCopy && !unsafe.empty()) {
                    return path + " deleted before a flush of " + unsafe.begin()->first;
                }
            }
        }
        return {};
    }

    [[nodiscard]] std::string SplitLoss() const {
        // The switch means that the source goes at the end whatever became of the run, and so does
        // the setting in a job of the window. The failure is told.
        const bool bySwitch =
            (Has(Job::DeletesAlways) || (job.road == Road::Sfv && Has(Job::Deletes))) &&
            !run.killed && (Has(Job::Cancelled) || !run.message.empty());
        // The identity is taken by the second question about the open file.
        constexpr std::size_t UntilIdentity = 3;
        const auto opened = std::ranges::find_if(run.operations, [](const FileOperation& one) {
            return one.call == "open" && IsSource(one.path);
        });
        const auto opening = static_cast<std::size_t>(opened - run.operations.begin());
        const bool wasRead = opening + UntilIdentity < fault.number;
        for (const auto& [path, bytes] : before) {
            const auto isArchiveOfIt = [&, &held = bytes](const auto& file) {
                return Matches(file.first, "tmp/.*zip") && Unpack(file.second) == held;
            };
            if (IsSource(path) && BytesOf(after, path) != bytes && !PartsHold(after, bytes) &&
                !(bySwitch && (bytes == Content() || !wasRead)) &&
                !(Has(Job::Compressed) && std::ranges::any_of(after, isArchiveOfIt))) {
                return "LOSS of " + path;
            }
        }
        return {};
    }

    [[nodiscard]] std::string JoinLoss() const {
        // Somebody may have changed a part while it was read, or afterwards.
        const std::string now = JoinedParts(before);
        const auto isHeld = [&](const std::string& bytes) {
            return std::ranges::any_of(after, [&](const auto& file) {
                return (file.second == Content() || file.second == now) &&
                       Contains(file.second, bytes);
            });
        };
        for (const auto& [path, bytes] : before) {
            const bool precious = bytes == Content() || Matches(path, "PARTS/DATA.BIN_Part[123]");
            const bool older = (path == Beside || path == Elsewhere) && !Has(Job::Cancelled);
            if (BytesOf(after, path) != bytes &&
                ((precious && !isHeld(bytes)) || (older && !isHeld("")))) {
                return "LOSS of " + path;
            }
        }
        // Whoever has to look for the file is told where it is.
        const bool final = BytesOf(after, Has(Job::Moves) ? Elsewhere : Beside) == Content();
        const bool lost = now == Content() && JoinedParts(after) != Content() && !final;
        const bool mustTell = !run.killed && !fault.stays && fault.to.empty();
        return lost && mustTell && !Contains(run.message, "\nThe joined file is complete: ")
                   ? "nobody says where the joined file is"
                   : "";
    }

    [[nodiscard]] std::string Loss() const { return job.IsJoin() ? JoinLoss() : SplitLoss(); }

    // A part whose checksum failed has the error's text in its line, and one that could not be
    // found again has none.
    [[nodiscard]] std::string Checksums(const Snapshot& files) const {
        const std::string& sfv = BytesOf(files, Part("0.sfv"));
        const bool partStruck = At("OUT.*") || fault.stays;
        for (const char* ending : {"1", "2", "3"}) {
            const std::string path = Part(ending);
            const std::regex pattern("\n" + path.substr(4) + "  ([^\r]*)\r");
            std::smatch line;
            const bool found = std::regex_search(sfv, line, pattern);
            const auto bytes = std::as_bytes(std::span(BytesOf(files, path)));
            Crc32 engine;
            const auto seed = engine.CRCTableBuild(Crc32::IeeePolynomial, Crc32::InitialValue);
            const auto right = Crc32::CRCFinal(engine.CRCUpdate(bytes, seed));
            const bool saysSo = partStruck && (!found || line[1].str().ends_with(" ERROR "));
            if (!saysSo && (!found || std::stoul(line[1], nullptr, 16) != right)) {
                return "no or wrong checksum of " + path;
            }
        }
        return {};
    }

    [[nodiscard]] std::string SplitResult(const Snapshot& files) const {
        // The program has no word for a store that cannot be read or written: it uses defaults.
        const bool otherSettings = At("config.*") || (fault.stays && fault.number > 0);
        if (!PartsHold(files, Content())) {
            return Has(Job::Compressed) && otherSettings ? "" : "the parts are not the source";
        }
        // A script without its date, and without the line that a setting decides.
        const auto timeless = [&](const Snapshot& from) {
            static const std::regex date(R"(Rem \|  Created [^\r]*\r\n)");
            static const std::regex deletion("Del \"[^\r]*_Part\\*\"\r\n");
            const std::string script = std::regex_replace(BytesOf(from, Part("0.bat")), date, "");
            return otherSettings ? std::regex_replace(script, deletion, "") : script;
        };
        return timeless(files) != timeless(clean)          ? "another script"
               : job.road == Road::Sfv || Has(Job::Native) ? Checksums(files)
                                                           : "";
    }

    [[nodiscard]] std::string JoinResult(const Snapshot& files) const {
        if (BytesOf(files, Has(Job::Moves) ? Elsewhere : Beside) != Content()) {
            return "the joined file is not the source";
        }
        for (const auto& [path, bytes] : clean) {
            if (!files.contains(path)) {
                return "missing: " + path;
            }
        }
        for (const auto& [path, bytes] : files) {
            if (path.starts_with("PARTS") && !clean.contains(path) && !IsUnfinished(path)) {
                return "still there: " + path;
            }
        }
        return {};
    }

    // A run that says nothing has done its work, here in `files`.
    [[nodiscard]] std::string Result(const WatchedRun& told, const Snapshot& files) const {
        return !SaysDone(job, told) || Has(Job::ChecksOnly) ? ""
               : job.IsJoin()                               ? JoinResult(files)
                                                            : SplitResult(files);
    }

    // The run time's text for a fault. Where the program only asks for a file it may take the fault
    // for an absence, and a deletion tells no reason; a fault that stays may be met again
    // elsewhere. Where the first part is gone, the file of checksums has no name.
    [[nodiscard]] bool IsReason(const std::string& text) const {
        static const std::string reasons =
            "\nENOSPC: Disk full\nEIO: Device I/O error\nEACCES: Permission denied\n"
            "ENOENT: File not found\nENOENT: Path not found\nEINTR: Path/File access error\n";
        static const Words others = {"File not found", "Path not found", "Path/File access error",
                                     "File already exists", "it is not the file that was joined"};
        const bool vague = fault.stays || Struck({"stat", "list", "attribute", "statfs", "delete",
                                                  "chdir", "space", "chmod"});
        return Contains(reasons, "\n" + fault.kind + ": " + text + "\n") ||
               (vague && others.contains(text)) ||
               (job.road == Road::Sfv && text == "Subscript out of range") ||
               (run.status == 2 && text == "no join script");
    }

    // The words are those that the programs have for a failure, and a file that they name is there.
    [[nodiscard]] std::string Message() const {
        if (Has(Job::Native)) {
            const bool known =
                run.message.empty() || Matches(run.message, "(zarn: [^\n]*: [^\n:]+\n)+");
            return known ? "" : "words of nobody's: " + run.message;
        }
        static const std::regex boxes(
            "Error\nThe source file was not deleted:\n[^\n]*\n[^\n]*\n|"
            "Error\nThe stored password cannot be [^\n]*\n[^\n]*\n|"
            "Error\nWrite error in file      \nProbably the disk is full.\n\n"
            "Split process aborted.\n|"
            "Error\nError in Folder, Please check\n|Information\nScript Checked Successfully !\n|"
            "^Error\nSource File : [^\n]*\\\\DATA\\.BIN\nNot exist, verify file name and Path \n");
        static const std::regex refused("ZarnScript: [^\n]*: ([^\n:]+)\n()");
        static const std::regex failed(
            "(?:Critical Error\nApplication Critical Error {24}\n[0-9]+|ZarnScript: [^\n]*\\.bat: "
            "cannot (?:make|copy|delete|rename|replace|build|move) \"[^\"\n]+\"): ([^\n]+)\n"
            "(?:The joined file is complete: [^\n]*(\\\\[^\n]+)\n)?");
        const std::string words =
            job.IsJoin() ? run.message : std::regex_replace(run.message, boxes, "");
        std::smatch match;
        const bool known =
            words.empty() || (std::regex_match(words, match, run.status == 2 ? refused : failed) &&
                              IsReason(match[1]));
        const std::string place = match.empty() ? "" : Replace(match[2].str(), "\\", "/");
        const bool isThere = std::ranges::any_of(after, [&](const auto& file) {
            return file.second == Content() && ("/" + file.first).ends_with(place);
        });
        return known && (place.empty() || isThere) ? "" : "words of nobody's: " + run.message;
    }

    // Until its removal, a source that is another one by then stays, and the user is told.
    [[nodiscard]] std::string Kept(std::size_t removal) const {
        const bool stays = std::ranges::all_of(before, [&](const auto& file) {
            return !IsSource(file.first) || BytesOf(after, file.first) == file.second;
        });
        return removal > 0 && fault.number <= removal && stays && SaysDone(job, run)
                   ? "nobody says that the source is kept"
                   : "";
    }

    // The joined file is there once, and so is a file that has taken its place.
    [[nodiscard]] std::string OneOfEach() const {
        const auto count = [&](const std::string& bytes) {
            return std::ranges::count(after, bytes, &Snapshot::value_type::second);
        };
        if (!job.IsJoin() || Has(Job::Cancelled)) {
            return {};
        }
        // A link takes no name away, so the name can go to another file before it is deleted.
        const bool isRace = job.volume == "replaces" && Struck({"delete"});
        if (!isRace && BytesOf(before, fault.from) == Content() &&
            count(BytesOf(before, fault.to)) == 0) {
            return "LOSS of " + fault.to;
        }
        // A link at the destination may lead to the joined file.
        const bool isLinked =
            before.contains(Beside) && BytesOf(before, Beside) == BytesOf(before, Elsewhere);
        const auto names = count(Content());
        const bool once = names == 1 || (isLinked && names == 2) || !fault.to.empty();
        return once || !SaysDone(job, run) ? "" : "the joined file is not there once";
    }

    // Nothing a second run needs has been deleted.
    [[nodiscard]] bool CanRepeat() const {
        const std::string script =
            Has(Job::Native) ? Part("1") : Split(job.arguments, " ").front().substr(2);
        return job.IsJoin()
                   ? JoinedParts(after) == Content() && after.contains(Replace(script, "\\", "/"))
                   : BytesOf(after, Source) == Content();
    }
};

}  // namespace

bool SaysDone(const Job& job, const WatchedRun& run) {
    const std::string done = "Information\nScript Checked Successfully !\n";
    return !run.killed && run.message == (job.Has(Job::ChecksOnly) ? done : "");
}

std::string JudgeRun(const Evidence& evidence) {
    const Judge judge{evidence};
    return FirstOf({judge.End(), judge.Loss(), judge.Order(), judge.Others(), judge.HalfMade(),
                    judge.Store(), judge.Result(evidence.run, evidence.after), judge.Message()});
}

std::string JudgeIdentity(const Evidence& evidence, std::size_t removal) {
    const Judge judge{evidence};
    return FirstOf({judge.End(), judge.Others(), judge.Loss(), judge.Order(), judge.OneOfEach(),
                    judge.Kept(removal)});
}

std::string JudgeRepetition(const Evidence& first, const WatchedRun& second,
                            const Snapshot& after) {
    const Judge one{first};
    const Judge again{{first.job, {}, second, first.after, after, first.clean}};
    const bool canRepeat = one.CanRepeat();
    const std::string complaint =
        FirstOf({canRepeat && !SaysDone(first.job, second) ? "fails: " + second.message : "",
                 again.End(), again.Loss(), canRepeat ? one.Result(second, after) : ""});
    return complaint.empty() ? "" : "in a second run: " + complaint;
}

}  // namespace zarn::testing
