#pragma once

#include <cstddef>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>

namespace zarn::testing {

/// A layer between a program and the C library that makes file operations fail. It is preloaded
/// into the programs as they were built; these variables tell it what to do. Operations on paths
/// below one folder are counted, with those on files opened there and every question for free
/// space; the n-th fails.
///
///   ZARN_FAULT_FOLDER  the folder
///   ZARN_FAULT_NUMBER  n, from 1; 0 lets all pass
///   ZARN_FAULT_CALL    set: the first such call from the n-th operation on is meant
///   ZARN_FAULT_KIND    what becomes of it: ENOSPC, EIO, EACCES, ENOENT or EINTR; `half` or `one`,
///                      of the bytes that were asked for; `kill-before`, `kill-within` (half of
///                      the bytes are moved) or `kill-after`
///   ZARN_FAULT_STAYS   set: every later one fails too; of ENOSPC those that need space
///   ZARN_FAULT_VOLUME  what the volume is like: `buffered` (the kernel does not copy), `shares`
///                      (it shares blocks), `split` (each folder is a volume of its own)
///   ZARN_FAULT_LIFE    microseconds after which the process is killed
///   ZARN_FAULT_LOG     the log: lines `op`, `struck` and `open` (for a file that was open at the
///                      end), each with number, call and path
class FaultLayer {
  public:
    FaultLayer();

    static FaultLayer& Instance();

    /// What is to become of one operation: this error unless 0, else so many bytes of it.
    struct Fate {
        int error = 0;
        std::size_t bytes = 0;
        bool killAfter = false;
    };
    Fate Count(std::string_view call, const std::string& path, std::size_t bytes);

    void Kill();
    void End();

    /// A path as an absolute one; empty if it does not lie in the folder.
    [[nodiscard]] std::string WatchedPath(const char* path) const;
    /// The path of a file that was opened in the folder, or null.
    [[nodiscard]] const std::string* PathOf(int file) const;
    /// Watches a file, where there is one and it lies in the folder.
    void Opened(int file, const std::string& path);
    void Closed(int file) { files_.erase(file); }

    [[nodiscard]] bool VolumeIs(std::string_view word) const { return volume_ == word; }
    [[nodiscard]] bool IsWatching() const { return !folder_.empty(); }
    /// Streams on watched files, by the files' numbers.
    [[nodiscard]] std::map<int, std::FILE*>& Streams() { return streams_; }

  private:
    void WriteLog();

    std::string folder_;
    std::string call_;
    std::string kind_;
    std::string volume_;
    std::string logFile_;
    long number_;
    bool stays_;
    bool hasStruck_ = false;
    long count_ = 0;
    std::string log_;
    std::map<int, std::string> files_;
    std::map<int, std::FILE*> streams_;
};

}  // namespace zarn::testing
