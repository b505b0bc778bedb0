#pragma once

#include <string>

namespace zarn {

/// The two fields of the main window that `Files::FileSizeGBytes` reaches for a small file.
class PieceSizeFields {
  public:
    PieceSizeFields() = default;
    PieceSizeFields(const PieceSizeFields&) = delete;
    PieceSizeFields& operator=(const PieceSizeFields&) = delete;
    virtual ~PieceSizeFields() = default;

    /// Selects `OptMB`, with all that follows from a user's choice of it.
    virtual void SelectOptMB() = 0;

    /// The text of `txtPartsNumber`.
    [[nodiscard]] virtual std::string txtPartsNumber() = 0;
};

}  // namespace zarn
