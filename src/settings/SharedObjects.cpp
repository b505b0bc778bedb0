#include "settings/SharedObjects.h"

namespace zarn {

Messages& SharedObjects::Messages() {
    if (!messages_) {
        messages_.emplace(*platform_.messageBoxes);
    }
    return *messages_;
}

Files& SharedObjects::Files() {
    if (!files_) {
        files_.emplace(*platform_.fileSystem, *platform_.volumes, Messages(), Separators());
    }
    return *files_;
}

Parameters& SharedObjects::Parameters() {
    if (!parameters_) {
        parameters_.emplace(*platform_.registry, *platform_.processes, *platform_.fileSystem,
                            Files(), Separators());
    }
    if (const std::string notice = platform_.registry->TakeNotice(); !notice.empty()) {
        Messages().Notice(notice);
    }
    return *parameters_;
}

void SharedObjects::Drop() {
    parameters_.reset();
    files_.reset();
    messages_.reset();
}

const LocaleSeparators& SharedObjects::Separators() {
    if (!separators_) {
        separators_ = ReadLocaleSeparators();
    }
    return *separators_;
}

}  // namespace zarn
