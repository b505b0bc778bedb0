#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/SharedObjects.h"

namespace zarn {

/// One part's entry in an SFV file. An entry without a name stands for a part that is not there.
struct SfvEntry {
    std::string Name;  ///< without folder
    std::string CRC;   ///< CRC text of any length; `FilesMakeSFV` leaves it padded
    std::string Size;  ///< bytes, decimal
    std::string Date;  ///< of the last write
};

/// Writes the two texts that go with the parts of one split job: the join script, a command script
/// that puts the parts together with `copy` alone, so that the receiver needs no copy of this
/// program, and the SFV file with the CRC-32 of every part for outside checkers.
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

    /// Writes the script beside its final name, for the caller to commit. With
    /// `deletesParts` the script deletes the parts at its end. Raises file errors, and subscript
    /// out of range where no part was added or `firstPart` has no "_Part".
    [[nodiscard]] std::unique_ptr<PendingFile> FilesMakeBat(std::string_view firstPart,
                                                            std::string_view destinationBase,
                                                            bool deletesParts);

    /// Full path of the SFV file, by the rule of `FunctionFileBat`.
    [[nodiscard]] static std::string FunctionFileSFV(std::string_view firstPart,
                                                     std::string_view destinationBase);

    /// Writes the SFV file, whole or not at all; entry 1 comes first and gives the file its name.
    /// Entries whose name is blank have no lines and do not count. The checksums are padded to the
    /// longest of them. Raises subscript out of range if there is no entry or the first has no
    /// part's name, and file errors.
    void FilesMakeSFV(std::span<SfvEntry> entries, std::string_view destinationBase);

    /// Puts "0" in front of `text` until it has `width` characters; returns the new text.
    static std::string PadLeftZero(std::string& text, std::int32_t width);

  private:
    [[nodiscard]] std::string HeadLines();
    [[nodiscard]] std::string CopyLines() const;
    [[nodiscard]] std::string ClosingLines(bool deletesParts) const;
    [[nodiscard]] std::string SfvHeadLines(std::int64_t partsCount);

    SharedObjects& shared_;
    std::string originalFile_;        ///< with its quotes
    std::vector<std::string> files_;  ///< with their quotes
};

}  // namespace zarn
