#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "join/JoinScript.h"
#include "platform/FileSystem.h"
#include "runtime/RuntimeError.h"

namespace zarn {

/// Runs a checked join script in the current folder. Parts are added to the temporary file in
/// place, by sharing their blocks where the file system can. Before the first deletion of
/// anything but the temporary file, what replaces it is on the medium.
class JoinScriptRunner {
  public:
    /// `scriptName` is the bare name of the running script's file; `destination` the full path
    /// for the finished file, empty without one. All arguments must outlive this object.
    JoinScriptRunner(FileSystem& fileSystem, const JoinScript& script, std::string_view scriptName,
                     std::string_view destination)
        : fileSystem_(fileSystem),
          script_(script),
          scriptName_(scriptName),
          destination_(destination) {}

    /// Runs the commands up to the first that fails. Returns nothing after a complete run, else
    /// the message: what failed, the file, the error's text, and where a complete file was left.
    /// A temporary file that was being built is deleted then, unless an older file of the final
    /// name is gone already. Call it once.
    [[nodiscard]] std::optional<std::string> Run();

  private:
    void Execute(const ScriptCommand& command);
    void MakeTemporary(const std::string& part);
    void AppendPart(const std::string& part);
    void DeleteOriginal();
    void RenameTemporary();
    void DeleteParts();
    void DeleteDestination();
    void MoveToDestination();
    void CopyToDestination(const std::string& beside);
    void TakeDestinationsName(const std::string& beside);
    std::int64_t CopyWhole(const std::string& from, LargeFileAccess& to);
    void Delete(std::string_view path);  // a missing file is no failure
    void FlushNames();
    void RequireBuilt() const;
    void Doing(std::string_view verb, std::string_view file);
    [[nodiscard]] std::string Failure(const RuntimeError& error);
    [[nodiscard]] std::vector<std::string> SetFiles() const;
    [[nodiscard]] LargeFileAccess& Temporary() const;
    [[nodiscard]] bool WillDelete();
    [[nodiscard]] bool Exists(std::string_view path);
    [[nodiscard]] std::string FreeNameAtDestination();

    FileSystem& fileSystem_;
    const JoinScript& script_;
    std::string_view scriptName_;
    std::string_view destination_;
    std::unique_ptr<LargeFileAccess> temporary_;  ///< null while this run has none
    std::vector<std::string> copied_;             ///< the parts, in order
    std::int64_t size_ = 0;                       ///< bytes in the temporary file
    std::string verb_;                            ///< what is being done,
    std::string file_;                            ///< and to which file, for the message
    bool canShare_ = true;                        ///< no part was refused so far
    bool namesFlushed_ = false;
    bool replacesDestination_ = false;  ///< the script has deleted what lies there
    std::string complete_;              ///< the joined file, once it alone holds what it replaces
};

}  // namespace zarn
