#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "join/FileCopier.h"
#include "platform/FileSystem.h"
#include "platform/Signals.h"
#include "runtime/RuntimeError.h"
#include "scripts/JoinScript.h"

namespace zarn {

enum class ScriptStatus {
    Done = 0,
    Failed = 1,   ///< a command failed
    Refused = 2,  ///< no file was touched
};

struct ScriptOutcome {
    ScriptStatus status = ScriptStatus::Done;
    std::string message;  ///< empty after a complete run
};

/// How a message goes on that tells where a complete file was left.
inline constexpr std::string_view CompleteFileMark = "\nThe joined file is complete: ";

/// Runs a checked join script in the current folder. Parts are added to the temporary file in
/// place. It is locked while it is built, so that no other join takes it for a left-over. Older
/// files are replaced in one step by what is on the medium in full; only the very files that were
/// read, unchanged, are deleted. The file that is built, and the destination, are files of exactly
/// these names.
class JoinScriptRunner {
  public:
    /// `scriptName` is the bare name of the running script's file; `destination` the full path
    /// for the finished file, empty without one. `added`, which may be empty, hears of the bytes
    /// that were joined. All other arguments must outlive this object.
    JoinScriptRunner(FileSystem& fileSystem, Signals& endingSignals, const JoinScript& script,
                     std::string_view scriptName, std::string_view destination,
                     FileCopier::Listener added = {})
        : fileSystem_(fileSystem),
          copier_(fileSystem, endingSignals, std::move(added)),
          script_(script),
          scriptName_(scriptName),
          destination_(destination) {}

    /// Runs the commands up to the first that fails, or to a signal that asks the process to end.
    /// The message tells what failed, the file, the error's text, and where a complete file was
    /// left; an unfinished one is deleted. A script is refused while another join builds its file
    /// in this folder. Call it once.
    [[nodiscard]] ScriptOutcome Run();

  private:
    using SetFile = std::pair<std::string, FileIdentity>;

    void Execute(const ScriptCommand& command);
    void MakeTemporary(const std::string& part);
    void AppendPart(const std::string& part);
    void ReplaceOriginal();
    void RenameTemporary();
    void DeleteParts();
    void ReplaceDestination();
    void MoveToDestination();
    void RefuseReadOnly(const std::string& path);
    void NoteOtherSetFiles();
    void DeleteSetFile(const SetFile& file);
    void FlushNames();
    void RequireBuilt() const;
    void Begin(std::string_view verb, std::string_view file);
    void Doing(std::string_view verb, std::string_view file);
    [[nodiscard]] ScriptOutcome Failed(std::string_view reason);
    void RemoveTemporary();
    [[nodiscard]] LargeFileAccess& Temporary() const;
    [[nodiscard]] bool Holds(const std::string& condition);
    [[nodiscard]] bool Has(ScriptAction action) const;

    FileSystem& fileSystem_;
    FileCopier copier_;
    const JoinScript& script_;
    std::string_view scriptName_;
    std::string destination_;
    std::unique_ptr<LargeFileAccess> temporary_;  ///< null while this run has none
    std::vector<SetFile> copied_;                 ///< the parts as they were read, in order
    std::vector<SetFile> others_;                 ///< scripts and checksum file of the set
    std::int64_t size_ = 0;                       ///< bytes in the temporary file
    FileIdentity built_;                          ///< the file, once it has its name
    std::string verb_;                            ///< what is being done,
    std::string file_;                            ///< and to which file, for the message
    bool namesFlushed_ = false;
    bool replacesOriginal_ = false;                   ///< the script has deleted an older file
    std::optional<FileIdentity> olderAtDestination_;  ///< likewise
    std::string kept_;           ///< a file of the set that is not the one that was read
    std::string complete_;       ///< where the joined file is
    std::string_view reason_;    ///< that there is no number for
    bool isJoinedHere_ = false;  ///< by another process
};

}  // namespace zarn
