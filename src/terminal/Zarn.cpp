#include "terminal/Zarn.h"

#include <memory>

#include "runtime/RuntimeError.h"
#include "terminal/CheckCommand.h"
#include "terminal/JoinCommand.h"
#include "terminal/NoRegistry.h"
#include "terminal/Options.h"
#include "terminal/SplitCommand.h"

namespace zarn {

namespace {

bool RunCommand(const CheckOptions& options, const Workplace& place) {
    return RunCheck(options, place);
}

bool RunCommand(const SplitOptions& options, const Workplace& place) {
    return RunSplit(options, place);
}

bool RunCommand(const JoinOptions& options, const Workplace& place) {
    return RunJoin(options, place);
}

template <typename Options>
int RunWith(const Options& options, SharedObjects& shared, HeardMessages& messages,
            Terminal& terminal) {
    Console console(terminal, options.quiet ? Console::Manner::Quiet : Console::Manner::Usual);
    Signals& endingSignals = *shared.Platform().endingSignals;
    endingSignals.Hold();
    bool isDone = false;
    try {
        UserPaths paths(*shared.Platform().fileSystem);
        isDone = RunCommand(options, Workplace{shared, messages, terminal, console, paths});
    } catch (const RuntimeError& error) {
        console.Tell(error.what());
    }
    if (console.HasLostOutput()) {
        console.Tell("standard output cannot be written");
    }
    if (endingSignals.IsHeld()) {
        console.Tell("interrupted; nothing is left half-made");
    }
    endingSignals.Deliver();
    return isDone && !console.HasLostOutput() ? 0 : 1;
}

}  // namespace

int RunZarn(std::span<const std::string> words, const std::function<Platform()>& makePlatform,
            Terminal& terminal) {
    const Request request = ReadOptions(words);
    if (const auto* answer = std::get_if<UsageAnswer>(&request)) {
        terminal.Write(answer->status == 0 ? Stream::Output : Stream::Error, answer->text);
        return answer->status;
    }
    Platform platform = makePlatform();
    platform.registry = std::make_unique<NoRegistry>();
    auto boxes = std::make_unique<HeardMessages>();
    HeardMessages& messages = *boxes;
    platform.messageBoxes = std::move(boxes);
    SharedObjects shared(std::move(platform));
    if (const auto* check = std::get_if<CheckOptions>(&request)) {
        return RunWith(*check, shared, messages, terminal);
    }
    if (const auto* join = std::get_if<JoinOptions>(&request)) {
        return RunWith(*join, shared, messages, terminal);
    }
    return RunWith(std::get<SplitOptions>(request), shared, messages, terminal);
}

}  // namespace zarn
