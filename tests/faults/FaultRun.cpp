#include "faults/FaultRun.h"

#include <csignal>
#include <sstream>

#include "support/TestFolder.h"

namespace zarn::testing {

namespace {

void ReadLog(const std::string& text, const std::string& folder, WatchedResult& result) {
    std::istringstream log(text);
    std::string word;
    FileOperation operation;
    while (log >> word >> operation.number >> operation.call && log.get() != EOF &&
           std::getline(log, operation.path)) {
        if (operation.path.starts_with(folder + "/")) {
            operation.path.erase(0, folder.size() + 1);
        }
        if (word == "struck") {
            result.struck = operation;
        } else {
            (word == "open" ? result.open : result.operations).push_back(operation);
        }
    }
}

}  // namespace

WatchedResult RunWatched(const WatchedProgram& program, const std::string& folder,
                         const Fault& fault) {
    constexpr long WatchdogLife = 20'000'000;
    const TestFolder notes;
    notes.Write("log", "");
    std::map<std::string, std::string> environment = {
        {"XDG_CONFIG_HOME", folder + "/config"},
        {"XDG_CACHE_HOME", folder + "/cache"},
        {"TMPDIR", folder + "/tmp"},
        {"LC_ALL", "C"},
        // The sanitizers' layer does not insist on being the first.
        {"ASAN_OPTIONS", "verify_asan_link_order=0"},
        {"DISPLAY", ""},
        {"LD_PRELOAD", ZARN_FAULT_PRELOAD},
        {"ZARN_FAULT_FOLDER", folder},
        {"ZARN_FAULT_NUMBER", std::to_string(fault.number)},
        {"ZARN_FAULT_KIND", fault.kind},
        {"ZARN_FAULT_CALL", fault.call},
        {"ZARN_FAULT_STAYS", fault.stays ? "1" : ""},
        {"ZARN_FAULT_VOLUME", program.volume},
        {"ZARN_FAULT_LIFE", std::to_string(fault.life > 0 ? fault.life : WatchdogLife)},
        {"ZARN_FAULT_LOG", notes.System("log")}};
    WatchedResult result;
    result.program = RunProgram(program.program, program.arguments, environment, folder);
    const bool timer = result.program.status == 128 + SIGALRM;
    result.hung = timer && fault.life == 0;
    result.killed = (timer && fault.life > 0) || result.program.status == 128 + SIGKILL;
    ReadLog(notes.Read("log"), folder, result);
    return result;
}

}  // namespace zarn::testing
