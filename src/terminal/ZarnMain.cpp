#include <span>
#include <string>
#include <vector>

#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/LinuxTerminal.h"
#include "terminal/Zarn.h"

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + (count > 0 ? 1 : 0), arguments + count);
    zarn::LinuxTerminal terminal;
    zarn::UserFolders folders = zarn::UserFoldersFromEnvironment();
    // Drives have no names here that a user could choose.
    folders.configuration = "/dev/null";
    return zarn::RunZarn(
        words, [&folders] { return zarn::MakeLinuxPlatform(folders); }, terminal);
}
