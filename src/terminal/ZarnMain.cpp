#include <span>
#include <string>
#include <vector>

#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/LinuxTerminal.h"
#include "terminal/Zarn.h"

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + (count > 0 ? 1 : 0), arguments + count);
    zarn::LinuxTerminal terminal;
    return zarn::RunZarn(
        words, [] { return zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment()); },
        terminal);
}
