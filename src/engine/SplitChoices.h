#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/SplitJob.h"
#include "scripts/SetNames.h"
#include "settings/SharedObjects.h"

namespace zarn {

/// What a job leaves to the user's settings. Each question is asked at the moment at which its
/// answer is needed, and no sooner: a setting may change while a job runs.
class SplitChoices {
  public:
    SplitChoices() = default;
    SplitChoices(const SplitChoices&) = delete;
    SplitChoices& operator=(const SplitChoices&) = delete;
    virtual ~SplitChoices() = default;

    /// Asked once, as a split begins: gives the process the priority that the user wants for it.
    virtual void SetPriority() = 0;

    /// The folder for an archive; one that is blank counts as missing.
    [[nodiscard]] virtual std::string TemporaryFolder() = 0;

    /// The path of the archive of `source`, with `folder` put in front as it stands.
    [[nodiscard]] virtual std::string ArchivePath(std::string_view source,
                                                  std::string_view folder) {
        return FunctionZipTempName(source, folder);
    }

    /// The password of an archive, empty for an open one. Nothing if there should be one that
    /// cannot be told: the user is told so, and no archive is written.
    [[nodiscard]] virtual std::optional<std::string> ArchivePassword() = 0;

    /// The level of an archive for which the job wants `level`; 0 only stores.
    [[nodiscard]] virtual std::int32_t ArchiveLevel(std::int32_t level) = 0;

    /// Whether the join script deletes the parts.
    [[nodiscard]] virtual bool DeletesParts() = 0;

    /// Whether the source goes as soon as an archive, or parts and script, can take its place.
    [[nodiscard]] virtual bool DeletesSource() = 0;

    /// Whether it goes at the job's end. `complete`: the result of `SplitRunner::Run`.
    [[nodiscard]] virtual bool DeletesSourceAtEnd(const SplitJob& job, bool complete) = 0;
};

/// The settings in the store, read anew at each question. The job's own `deleteSource` does not
/// count: the setting takes the source, however the job ended.
class StoredChoices : public SplitChoices {
  public:
    /// `shared` must outlive this object.
    explicit StoredChoices(SharedObjects& shared) : shared_(shared) {}

    // Reading the setting gives the process its priority class.
    void SetPriority() override { static_cast<void>(Stored().PriorityProcessor()); }
    [[nodiscard]] std::string TemporaryFolder() override { return Stored().TemporaryFolder(); }
    [[nodiscard]] std::optional<std::string> ArchivePassword() override {
        return Stored().ZipPassword();
    }
    [[nodiscard]] std::int32_t ArchiveLevel(std::int32_t level) override {
        return Stored().CompressDestination() == 1 ? level : 0;
    }
    [[nodiscard]] bool DeletesParts() override { return Stored().DeleteSplitParts() == 1; }
    [[nodiscard]] bool DeletesSource() override { return Stored().DeleteSource() == 1; }
    [[nodiscard]] bool DeletesSourceAtEnd(const SplitJob& /*job*/, bool /*complete*/) override {
        return DeletesSource();
    }

  private:
    [[nodiscard]] Parameters& Stored() { return shared_.Parameters(); }

    SharedObjects& shared_;
};

/// Choices that stand before the job begins: no setting is read. The source goes at the end of a
/// complete job that asks for it, and never before.
class FixedChoices : public SplitChoices {
  public:
    std::string temporaryFolder;
    std::string archivePassword;  ///< empty: none
    bool deletesParts = false;

    void SetPriority() override {}
    [[nodiscard]] std::string TemporaryFolder() override { return temporaryFolder; }
    [[nodiscard]] std::optional<std::string> ArchivePassword() override { return archivePassword; }
    [[nodiscard]] std::int32_t ArchiveLevel(std::int32_t level) override { return level; }
    [[nodiscard]] bool DeletesParts() override { return deletesParts; }
    [[nodiscard]] bool DeletesSource() override { return false; }
    [[nodiscard]] bool DeletesSourceAtEnd(const SplitJob& job, bool complete) override {
        return complete && job.deleteSource;
    }
};

}  // namespace zarn
