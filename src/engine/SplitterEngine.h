#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/PartList.h"
#include "engine/SharedProgress.h"
#include "engine/SplitChoices.h"
#include "engine/SplitJob.h"
#include "engine/SplitterEvents.h"
#include "runtime/RuntimeError.h"
#include "settings/SharedObjects.h"

namespace zarn {

/// Carries out one split job: cuts one file into numbered part files, bare slices without header
/// or trailer, and leaves the join script beside them. One object serves one job.
class SplitterEngine {
  public:
    /// All arguments must outlive this object.
    SplitterEngine(SharedObjects& shared, SharedProgress& progress, SplitChoices& choices,
                   SplitterEvents& events);
    SplitterEngine(const SplitterEngine&) = delete;
    SplitterEngine& operator=(const SplitterEngine&) = delete;
    ~SplitterEngine();

    /// The cancel flag. It is polled at every block and cleared at the start of a run.
    [[nodiscard]] bool CancelRequested() const { return cancelRequested_; }
    void CancelRequested(bool value) { cancelRequested_ = value; }

    /// Upper bound of the two lists: the number of parts plus one, for the empty last element.
    [[nodiscard]] std::int32_t ItemsFilesMatrixPath() const;

    /// Full path, or name without folder, of a part, counted from 1. The name of a part that
    /// turned out empty is blank. Raises subscript out of range.
    [[nodiscard]] const std::string& tabFilesMatrixPath(std::int32_t index) const;
    [[nodiscard]] const std::string& tabFilesMatrix(std::int32_t index) const;

    /// The base path: destination folder plus the last path item of the input. The stem of the
    /// names of parts, join script and SFV file.
    [[nodiscard]] const std::string& SFVDestinationFile() const { return basePath_; }

    /// The last path item of `path` followed by `suffix`.
    [[nodiscard]] static std::string ConvertFileName(std::string_view path,
                                                     std::string_view suffix);

    /// Turns `source` into a ZIP file and returns its path. The ZIP lies in `folder` (the temporary
    /// folder, too), or in a private folder in there if its name is taken: nothing is replaced.
    /// The choices make of `level` the one that holds (0 to 9; what lies outside counts as the
    /// nearer of the two), give the password, and say whether the source is deleted as soon as
    /// the ZIP is written and on the medium. Only a signal ends it early. An archive that cannot be
    /// written is not reported: `SplittFile` then fails as on a missing file. Raises 76 if the
    /// temporary folder is missing, 48 if the ZIP library is missing, and file errors of making a
    /// private folder and of flushing the ZIP.
    [[nodiscard]] std::string CompressSource(const std::string& source, const std::string& folder,
                                             std::int32_t level);

    /// Cuts `source` into parts by the fields of `job`, whose destination ends in a backslash:
    /// with `compress` the archive that was made for it, to be deleted afterwards, else the job's
    /// own source. A run by count or over removable media leaves the size that it used in
    /// `partSize`. True after a complete run with its join script; false after a cancel or after a
    /// failure, which has been shown by then.
    bool SplittFile(const std::string& source, SplitJob& job);

    /// Why `SplittFile` failed; nothing if it did not, or has been cancelled.
    [[nodiscard]] std::optional<ErrorNumber> Failure() const { return failure_; }

    /// True for a network path, else if the unit has at least `bytes` free.
    [[nodiscard]] bool FunctionCheckSpaceOnUnit(std::int32_t bytes, std::string_view path);

    /// 9999 for a network path, else the smaller of the unit's free bytes and `bytes`.
    [[nodiscard]] std::int32_t FunctionFreeSpaceOnUnit(std::int32_t bytes, std::string_view path);

    /// 0 for a network path, else the unit's free bytes. Raises overflow above 32 bits.
    [[nodiscard]] std::int32_t FunctionCheckSpaceRemovable(std::string_view path);

    /// Waits until all that the job wrote is on the medium, an archive that is still there
    /// included, for a caller that deletes the source afterwards. Raises what `FlushVolume` raises.
    void FlushOutput();

    /// Deletes what the job has made: its parts as far as they are the same files still, their
    /// script and the archive. False, and nothing is deleted, once the source is.
    bool RemoveOutput();

    /// Deletes the job's source if it still is the very file that the job read, unchanged since.
    /// Another file of that name stays, as does a source that could not be read, or whose parts
    /// were replaced or removed, or could not have names; a message says so, once a job. A source
    /// that is missing, or that the system keeps, is passed over.
    void DeleteSource(const std::string& source);

  private:
    class Run;

    static constexpr std::string_view PartsLostReason =
        "Parts of it were removed or replaced while it was split.";

    [[nodiscard]] std::string TemporaryFolder();
    [[nodiscard]] std::string ArchivePath(const std::string& source, const std::string& folder);
    void WriteArchive(const std::string& source, std::int32_t level);
    void DiscardArchive();
    void FlushFolderOf(std::string_view path);
    [[nodiscard]] bool PartsAreThere();
    [[nodiscard]] bool MayReplaceSource();
    void TellThatSourceStays(const std::string& source);
    void DeleteFilesMatrix();
    void RaiseRemovableMedia(std::string& partPath, double& partNumber, double& totalParts,
                             double& partSize);

    SharedObjects& shared_;
    SharedProgress& progress_;
    SplitChoices& choices_;
    SplitterEvents& events_;
    bool cancelRequested_ = false;
    PartList parts_;
    std::optional<ErrorNumber> failure_;
    bool isComplete_ = false;          ///< all parts and the script are there
    std::string_view whySourceStays_;  ///< the reason for the user; empty: it may be deleted
    std::string basePath_;
    std::string source_;                      ///< path of the user's file
    std::optional<FileIdentity> sourceFile_;  ///< as it was opened; nothing if it was not
    bool sourceIsDeleted_ = false;
    bool sourceWasTold_ = false;  ///< the user knows that the source stays
    std::string archive_;  ///< the path of `CompressSource`'s ZIP; empty without a compression
    std::optional<FileIdentity> archiveFile_;  ///< nothing if the ZIP could not be written
    std::string archiveFolder_;  ///< made for the ZIP alone; empty if the ZIP needed none
};

}  // namespace zarn
