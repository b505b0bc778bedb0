#include "platform/linux/LinuxSystemFigures.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <utility>

#include "platform/linux/FileDescriptor.h"
#include "runtime/RuntimeError.h"

namespace zarn {

namespace {

// Room for the lines of two thousand processors, which come first.
constexpr std::size_t StatSize = std::size_t{256} * 1024;
constexpr std::size_t MemorySize = 4096;

std::optional<std::string> ReadOnce(const std::string& path, std::size_t size) {
    const FileDescriptor file = OpenFile(path, O_RDONLY);
    if (!file.IsOpen()) {
        return std::nullopt;
    }
    std::string text(size, '\0');
    try {
        text.resize(ReadSome(file, std::as_writable_bytes(std::span(text))));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    return text;
}

/// Takes the number at the start of a text, and the blanks ahead of it, away from the text.
std::optional<std::int64_t> TakeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text = {stop, end};
    return number;
}

/// "cpu" and a digit ahead of each processor that is switched on.
std::int32_t CountProcessors(std::string_view text) {
    constexpr std::string_view Line = "\ncpu";
    std::int32_t count = 0;
    for (std::size_t place = text.find(Line); place != std::string_view::npos;
         place = text.find(Line, place + Line.size())) {
        ++count;
    }
    return count;
}

/// The number behind a name at the start of a line, in kilobytes.
std::int64_t MemoryLine(std::string_view text, std::string_view name) {
    constexpr std::int64_t Kilobyte = 1024;
    const std::size_t place = text.find(name);
    if (place == std::string_view::npos) {
        return 0;
    }
    text.remove_prefix(place + name.size());
    return TakeNumber(text).value_or(0) * Kilobyte;
}

std::int64_t Growth(std::int64_t from, std::int64_t to) {
    return std::max<std::int64_t>(to - from, 0);
}

}  // namespace

LinuxSystemFigures::LinuxSystemFigures(std::string folder)
    : folder_(std::move(folder)), tick_(10'000'000 / sysconf(_SC_CLK_TCK)) {
}

// The first line, "cpu", sums up user, nice, system, idle, iowait, irq, softirq and steal; guest
// times, which follow, are in user and nice already.
std::optional<LinuxSystemFigures::Ticks> LinuxSystemFigures::ParseStat(std::string_view text) {
    constexpr std::string_view FirstLine = "cpu ";
    constexpr std::size_t Idle = 3;
    constexpr std::size_t WaitsForDisk = 4;
    std::array<std::int64_t, 8> counts{};
    if (!text.starts_with(FirstLine)) {
        return std::nullopt;
    }
    Ticks ticks;
    ticks.processors = std::max(CountProcessors(text), 1);
    text.remove_prefix(FirstLine.size());
    for (std::int64_t& count : counts) {
        const std::optional<std::int64_t> number = TakeNumber(text);
        if (!number) {
            return std::nullopt;
        }
        count = *number;
        ticks.all += count;
    }
    ticks.idle = counts[Idle] + counts[WaitsForDisk];
    return ticks;
}

std::optional<ProcessorTimes> LinuxSystemFigures::Times() {
    const auto text = ReadOnce(folder_ + "/stat", StatSize);
    const auto ticks = text ? ParseStat(*text) : std::nullopt;
    if (!ticks) {
        return std::nullopt;
    }
    const std::int64_t all = Growth(last_.all, ticks->all);
    times_.idle += std::min(Growth(last_.idle, ticks->idle), all) * tick_;
    times_.system += all * tick_ / ticks->processors;
    times_.processors = ticks->processors;
    last_ = *ticks;
    return times_;
}

MemoryFigures LinuxSystemFigures::Memory() {
    const std::string text = ReadOnce(folder_ + "/meminfo", MemorySize).value_or("");
    return {MemoryLine(text, "MemTotal:"), MemoryLine(text, "MemAvailable:")};
}

bool LinuxSystemFigures::StartCollection() {
    collectedFrom_ = Times();
    load_ = 0;
    return collectedFrom_.has_value();
}

std::optional<std::int32_t> LinuxSystemFigures::CollectedLoad() {
    const auto times = collectedFrom_ ? Times() : std::nullopt;
    if (!times) {
        return std::nullopt;
    }
    const std::int64_t all = (times->system - collectedFrom_->system) * times->processors;
    if (all > 0) {
        const std::int64_t idle = times->idle - collectedFrom_->idle;
        load_ = static_cast<std::int32_t>(std::clamp<std::int64_t>(100 - idle * 100 / all, 0, 100));
        collectedFrom_ = times;
    }
    return load_;
}

void LinuxSystemFigures::StopCollection() {
    collectedFrom_.reset();
}

}  // namespace zarn
