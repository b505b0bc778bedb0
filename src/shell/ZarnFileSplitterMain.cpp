#include <string>
#include <vector>

#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/UserFolders.h"
#include "settings/SharedObjects.h"
#include "shell/EntryProcedure.h"

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + (count > 0 ? 1 : 0), arguments + count);
    zarn::SharedObjects shared(zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment()));
    zarn::EntryProcedure(words, shared);
    shared.Platform().endingSignals->Deliver();
    return 0;
}
