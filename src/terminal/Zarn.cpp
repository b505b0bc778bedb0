#include "terminal/Zarn.h"

#include "terminal/Options.h"

namespace zarn {

int RunZarn(std::span<const std::string> words, const std::function<Platform()>& makePlatform,
            Terminal& terminal) {
    const Request request = ReadOptions(words);
    if (const auto* answer = std::get_if<UsageAnswer>(&request)) {
        terminal.Write(answer->status == 0 ? Stream::Output : Stream::Error, answer->text);
        return answer->status;
    }
    static_cast<void>(makePlatform);
    return 1;
}

}  // namespace zarn
