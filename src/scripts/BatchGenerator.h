#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "settings/SharedObjects.h"

namespace zarn {

/// Writes the join script of one split job: a command script that puts the parts together with
/// `copy` alone, so that the receiver needs no copy of this program.
class BatchGenerator {
  public:
    /// `shared` must outlive this object.
    explicit BatchGenerator(SharedObjects& shared) : shared_(shared) {}

    /// The file that was cut; its last path item is taken.
    void OriginalFile(std::string_view fileName);

    /// Appends a part's name, trimmed of blanks.
    void FilesADD(std::string_view fileName);

    /// Full path of the join script: the folder of `destinationBase` and the name of the first
    /// part with every digit 1 behind "_Part" turned to 0. Raises subscript out of range if
    /// `firstPart` is empty or has no "_Part".
    [[nodiscard]] static std::string FunctionFileBat(std::string_view firstPart,
                                                     std::string_view destinationBase);

    /// Writes the script beside its final name, for the caller to commit. `crc` is kept and not
    /// written: the script has no place for it. Raises file errors, and subscript out of range
    /// where no part was added.
    [[nodiscard]] std::unique_ptr<PendingFile> PrepareBat(std::string_view firstPart,
                                                          std::string_view destinationBase,
                                                          std::string_view crc);

    /// Writes the script in one step.
    void FilesMakeBat(std::string_view firstPart, std::string_view destinationBase,
                      std::string_view crc);

  private:
    [[nodiscard]] std::string HeadLines();
    [[nodiscard]] std::string CopyLines() const;
    [[nodiscard]] std::string ClosingLines();

    SharedObjects& shared_;
    std::string originalFile_;        ///< with its quotes
    std::vector<std::string> files_;  ///< with their quotes
};

}  // namespace zarn
