#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Processes.h"
#include "scripts/JoinScript.h"
#include "settings/SharedObjects.h"

namespace zarn {

/// What a join from the window is to do.
struct JoinJob {
    std::string joinFile;    ///< full path of the join script
    std::string joinedFile;  ///< full path that the result is to have
};

/// Runs the copy of a join script that the window makes for a join. The window copies no byte of
/// a join itself: the script assembles the file beside the parts, and two lines behind it take the
/// file to a destination elsewhere.
class JoinRun {
  public:
    /// `shared` must outlive this object.
    JoinRun(SharedObjects& shared, JoinJob job);

    /// Makes the parts' folder the current one and the copy of the script. Raises file errors.
    void PrepareScript();

    /// Starts the copy in a process of its own. Raises what `Processes::StartHidden` raises; the
    /// copy is gone then.
    void Start();

    [[nodiscard]] bool IsRunning();

    /// Why the script, which has ended, did not make the file: a text for a box. Empty after a
    /// complete run.
    [[nodiscard]] std::string Failure();

    void RemoveScript();

    /// What a cancel removes: the copy of the script, the temporary file, and the file in both
    /// folders, an older file of exactly that name too, unless it is read-only. Where the script
    /// was refused, or one of the parts that it copies is missing, only the copy is removed: the
    /// file may be all that is left. A temporary file that another join has locked stays.
    void RemoveResults();

  private:
    [[nodiscard]] std::string Destination() const;  ///< empty where the result stays
    [[nodiscard]] bool PartsAreThere();
    void RemoveTemporary();
    void RemoveResult(const std::string& path);
    [[nodiscard]] bool ResultMoves() const;

    SharedObjects& shared_;
    JoinJob job_;
    std::string folder_;              ///< of the parts, with its backslash
    std::string partsBase_;           ///< where the script puts the file
    std::string tempScript_;          ///< the copy
    std::string scriptPath_;          ///< the same, as the system and the interpreter call it
    std::optional<JoinScript> plan_;  ///< nothing where the script will be refused
    ProcessId process_ = 0;
};

}  // namespace zarn
