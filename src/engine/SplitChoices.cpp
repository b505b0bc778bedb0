#include "engine/SplitChoices.h"

namespace zarn {

// Reading the setting gives the process its priority class.
void StoredChoices::SetPriority() {
    static_cast<void>(shared_.Parameters().PriorityProcessor());
}

std::string StoredChoices::TemporaryFolder() {
    return shared_.Parameters().TemporaryFolder();
}

std::optional<std::string> StoredChoices::ArchivePassword() {
    return shared_.Parameters().ZipPassword();
}

std::int32_t StoredChoices::ArchiveLevel(std::int32_t level) {
    return shared_.Parameters().CompressDestination() == 1 ? level : 0;
}

bool StoredChoices::DeletesParts() {
    return shared_.Parameters().DeleteSplitParts() == 1;
}

bool StoredChoices::DeletesSource() {
    return shared_.Parameters().DeleteSource() == 1;
}

bool StoredChoices::DeletesSourceAtEnd(const SplitJob& /*job*/, bool /*complete*/) {
    return DeletesSource();
}

}  // namespace zarn
