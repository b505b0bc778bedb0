#include "terminal/ChecksumPass.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "runtime/Text.h"
#include "scripts/Crc32.h"
#include "scripts/clsCRC32.h"

namespace zarn {

namespace {

/// The work on some files, which several readers share.
class ChecksumPass {
  public:
    ChecksumPass(std::span<ChecksumTask> tasks, FileSystem& disk) : tasks_(tasks), disk_(disk) {}

    /// Works until no task is left. For any number of threads at a time.
    void Work();

    /// Works through all tasks, each going on from the one before.
    void WorkTogether();

    /// Waits a moment, or until so many readers have ended, and tells whether they have.
    [[nodiscard]] bool Wait(std::size_t readers);

    void Stop() { stops_ = true; }
    [[nodiscard]] double Done() const { return static_cast<double>(done_.load()); }

  private:
    [[nodiscard]] std::uint32_t Read(ChecksumTask& task, const Crc32& engine,
                                     std::uint32_t running);
    void End();

    std::span<ChecksumTask> tasks_;
    FileSystem& disk_;
    std::mutex
        mutex_;  ///< of the file system, which knows one caller at a time, and of what follows
    std::condition_variable change_;
    std::size_t next_ = 0;
    std::size_t ended_ = 0;  ///< readers
    std::atomic<std::int64_t> done_ = 0;
    std::atomic<bool> stops_ = false;
};

void ChecksumPass::Work() {
    Crc32 engine;
    const std::uint32_t start = engine.CRCTableBuild(Crc32::IeeePolynomial, Crc32::InitialValue);
    while (true) {
        std::size_t mine = 0;
        {
            const std::lock_guard lock(mutex_);
            mine = next_++;
        }
        if (mine >= tasks_.size() || stops_) {
            return End();
        }
        tasks_[mine].checksum = Crc32::CRCFinal(Read(tasks_[mine], engine, start));
    }
}

void ChecksumPass::WorkTogether() {
    Crc32 engine;
    std::uint32_t running = engine.CRCTableBuild(Crc32::IeeePolynomial, Crc32::InitialValue);
    for (ChecksumTask& task : tasks_) {
        running = Read(task, engine, running);
        task.checksum = Crc32::CRCFinal(running);
    }
    End();
}

void ChecksumPass::End() {
    const std::lock_guard lock(mutex_);
    ++ended_;
    change_.notify_all();
}

bool ChecksumPass::Wait(std::size_t readers) {
    constexpr std::chrono::milliseconds Moment(50);
    std::unique_lock lock(mutex_);
    return change_.wait_for(lock, Moment, [this, readers] { return ended_ == readers; });
}

std::uint32_t ChecksumPass::Read(ChecksumTask& task, const Crc32& engine, std::uint32_t running) {
    try {
        std::unique_ptr<LargeFileAccess> file;
        {
            const std::lock_guard lock(mutex_);
            file = disk_.MakeLargeFile();
            file->Open(task.path);
            task.file = file->Identity();
        }
        return FeedFile(engine, running, *file, [this](std::size_t got) {
            done_ += static_cast<std::int64_t>(got);
            return !stops_;
        });
    } catch (const RuntimeError& error) {
        task.error = error.Number();
        return running;
    }
}

// More than a few read no faster, and take memory. A few bytes are read before they have begun.
std::size_t ReadersFor(std::span<const ChecksumTask> tasks, Reading reading, double bytes,
                       const Workplace& place) {
    constexpr double WorthSharing = 1048576;
    constexpr std::size_t MostReaders = 8;
    const std::size_t processors =
        std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, MostReaders);
    const bool seeks =
        reading == Reading::Together || tasks.empty() || bytes < WorthSharing ||
        place.shared.Platform().volumes->IsOnTurningDisk(FunctionPath(tasks.front().path));
    return seeks ? 1 : std::min(processors, tasks.size());
}

// As many as the system allows, perhaps none.
std::vector<std::jthread> StartThreads(std::size_t count, const std::function<void()>& work) {
    std::vector<std::jthread> threads;
    try {
        while (threads.size() < count) {
            threads.emplace_back(work);
        }
    } catch (const std::system_error&) {
        // The others do the work of this one.
    }
    return threads;
}

}  // namespace

bool ComputeChecksums(std::span<ChecksumTask> tasks, Reading reading, double bytes,
                      std::string_view stage, const Workplace& place) {
    ChecksumPass pass(tasks, place.Disk());
    const std::size_t count = ReadersFor(tasks, reading, bytes, place);
    place.console.BeginStage(stage, bytes);
    {
        const auto work = [&pass, reading] {
            return reading == Reading::Together ? pass.WorkTogether() : pass.Work();
        };
        const std::vector<std::jthread> readers = StartThreads(count, work);
        if (readers.empty()) {
            work();
        }
        while (!pass.Wait(std::max<std::size_t>(readers.size(), 1))) {
            place.console.Advance(pass.Done());
            if (place.EndingSignals().IsHeld()) {
                pass.Stop();
            }
        }
    }
    place.console.EndStage();
    return !place.EndingSignals().IsHeld();
}

}  // namespace zarn
