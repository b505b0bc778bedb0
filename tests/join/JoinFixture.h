#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxPlatform.h"
#include "runtime/RuntimeError.h"
#include "support/ForwardingFileSystem.h"
#include "support/ForwardingLargeFile.h"
#include "support/TestFolder.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

/// A file on a medium that is full once it has `room` bytes, and that logs its flushes.
class NearlyFullFile : public ForwardingLargeFile {
  public:
    NearlyFullFile(std::unique_ptr<LargeFileAccess> real, std::vector<std::string>& log,
                   const std::string& full)
        : ForwardingLargeFile(std::move(real)), log_(log), full_(full) {}

    void Create(std::string_view path) override {
        ForwardingLargeFile::Create(path);
        isFull_ = !full_.empty() && path.find(full_) != std::string_view::npos;
    }
    void Write(std::span<const std::byte> bytes) override {
        if (isFull_) {
            ForwardingLargeFile::Write(bytes.first(bytes.size() / 2));
            throw RuntimeError(ErrorNumber::DiskFull);
        }
        ForwardingLargeFile::Write(bytes);
    }
    void Flush() override {
        log_.emplace_back("flush");
        ForwardingLargeFile::Flush();
    }

  private:
    std::vector<std::string>& log_;
    const std::string& full_;
    bool isFull_ = false;
};

/// The real file system, with a log of what must come in order, and calls that fail on demand.
class WatchedFileSystem : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    bool DeleteFile(std::string_view path) override {
        const bool present = Attributes(path).has_value();
        if (path == undeletable || !ForwardingFileSystem::DeleteFile(path)) {
            return false;
        }
        if (present) {
            log.push_back("delete " + std::string(path));
        }
        return true;
    }
    void MoveFile(std::string_view from, std::string_view to) override {
        if (from == unmovable) {
            throw RuntimeError(ErrorNumber::PathFileAccessError);
        }
        ForwardingFileSystem::MoveFile(from, to);
        log.push_back("move " + std::string(from));
    }
    void FlushVolume(std::string_view folder) override {
        log.emplace_back("flush names");
        ForwardingFileSystem::FlushVolume(folder);
    }
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override {
        return std::make_unique<NearlyFullFile>(ForwardingFileSystem::MakeLargeFile(), log, full);
    }

    std::vector<std::string> log;
    std::string undeletable;
    std::string unmovable;
    std::string full;  ///< part of the path of files that find the medium full
};

/// A folder with a set of three parts of "Movie.avi", and what runs scripts in it.
class JoinFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        folder.Write("Movie.avi_Part1", "one ");
        folder.Write("Movie.avi_Part2", "two ");
        folder.Write("Movie.avi_Part3", "three");
    }

    ScriptOutcome Run(const std::string& script, const std::string& destination = {},
                      const std::string& name = "Movie.avi_Part0.bat") {
        folder.Write(name, script);
        return ScriptInterpreter(fileSystem).Run(folder.Drive(name), destination);
    }

    TestFolder folder;
    TestFolder home;
    WatchedFileSystem fileSystem{MakeLinuxPlatform(FoldersIn(home)).fileSystem};
};

inline std::string Text(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const std::string_view piece : pieces) {
        text += piece;
    }
    return text;
}

/// The lines of a script that copy the set of the fixture, and those that give it its name.
inline const std::string copies =
    "IF EXIST Zarn.TMP Del Zarn.TMP\r\n"
    "Copy \"Movie.avi_Part1\" Zarn.TMP\r\n"
    "Copy /b Zarn.TMP + \"Movie.avi_Part2\" Zarn.TMP\r\n"
    "Copy /b Zarn.TMP + \"Movie.avi_Part3\" Zarn.TMP\r\n";
inline const std::string naming =
    "IF EXIST \"Movie.avi\" Del \"Movie.avi\"\r\n"
    "Ren Zarn.TMP \"Movie.avi\"\r\n";
inline const std::string wholeScript = copies + naming + "Del \"Movie.avi_Part*\"\r\n";

}  // namespace zarn::testing
