#include <algorithm>
#include <limits>

#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* PlainText =
    "Write error in file      \rProbably the disk is full.\r\rSplit process aborted.";

// A disk that takes so many bytes and no more.
class FullDiskFile : public ForwardingLargeFile {
  public:
    FullDiskFile(std::unique_ptr<LargeFileAccess> real, std::size_t& room)
        : ForwardingLargeFile(std::move(real)), room_(room) {}
    void Write(std::span<const std::byte> bytes) override {
        const std::size_t fits = std::min(room_, bytes.size());
        ForwardingLargeFile::Write(bytes.first(fits));
        room_ -= fits;
        if (fits < bytes.size()) {
            throw RuntimeError(ErrorNumber::DiskFull);
        }
    }

  private:
    std::size_t& room_;
};

// Keeps the order of what cannot be undone, and refuses to do one of the steps.
class OrderedFileSystem : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    bool DeleteFile(std::string_view path) override {
        Step("delete " + std::string(path.substr(path.rfind('\\') + 1)));
        return ForwardingFileSystem::DeleteFile(path);
    }
    void FlushVolume(std::string_view /*folder*/) override { Step("flush volume"); }
    std::unique_ptr<PendingFile> PrepareFile(std::string_view path,
                                             std::string_view bytes) override {
        Step("prepare");
        return std::make_unique<OrderedScript>(ForwardingFileSystem::PrepareFile(path, bytes),
                                               *this);
    }

    std::vector<std::string> steps;
    std::string refused;

  private:
    class OrderedScript : public PendingFile {
      public:
        OrderedScript(std::unique_ptr<PendingFile> real, OrderedFileSystem& order)
            : real_(std::move(real)), order_(order) {}
        void Flush() override { order_.Step("flush script"); }
        void Commit() override {
            order_.Step("commit");
            real_->Commit();
        }

      private:
        std::unique_ptr<PendingFile> real_;
        OrderedFileSystem& order_;
    };

    void Step(const std::string& step) {
        steps.push_back(step);
        if (step == refused) {
            throw RuntimeError(ErrorNumber::DiskFull);
        }
    }
};

class FailureTest : public EngineTest {
  protected:
    FailureTest() { folder.Write("movie.avi", TestBytes(50000)); }

    void ExpectFailure(double partSize, const std::string& criterion = "Size", int count = 0) {
        EXPECT_FALSE(Split(partSize, criterion, count));
        ASSERT_EQ(test.boxes->shown.size(), 1U);
        EXPECT_EQ(test.boxes->shown.back().text, PlainText);
        EXPECT_EQ(test.boxes->shown.back().icon, BoxIcon::Exclamation);
        EXPECT_EQ(std::count(events.log.begin(), events.log.end(), "finish"), 0);
        test.boxes->shown.clear();
    }

    OrderedFileSystem& KeepOrder() {
        auto ordered = std::make_unique<OrderedFileSystem>(std::move(test.platform.fileSystem));
        OrderedFileSystem& order = *ordered;
        test.platform.fileSystem = std::move(ordered);
        Shared().Parameters().DeleteSource(1);
        return order;
    }
};

TEST_F(FailureTest, FullDiskKeepsPartsAndSourceAndWritesNoScript) {
    std::size_t room = 25000;
    WrapFiles([&](auto real) { return std::make_unique<FullDiskFile>(std::move(real), room); });
    Shared().Parameters().DeleteSource(1);
    ExpectFailure(20000);
    EXPECT_EQ(out.Names(), (std::vector<std::string>{"movie.avi_Part1", "movie.avi_Part2"}));
    EXPECT_EQ(out.Read("movie.avi_Part1") + out.Read("movie.avi_Part2"),
              folder.Read("movie.avi").substr(0, 25000));
}

TEST_F(FailureTest, SizesThatNeverEndAreRefused) {
    using Limits = std::numeric_limits<double>;
    for (const double size : {0.0, 0.5, -20000.0, Limits::infinity(), Limits::quiet_NaN()}) {
        ExpectFailure(size);
    }
    ExpectFailure(20000, "Parts", 0);
    ExpectFailure(20000, "size", -3);
    EXPECT_TRUE(out.Names().empty());
}

TEST_F(FailureTest, EmptyAndMissingSources) {
    folder.Write("movie.avi", "");
    ExpectFailure(20000);
    ExpectFailure(20000, "Parts", 2);
    source = folder.Drive("none");
    ExpectFailure(20000);
    EXPECT_TRUE(out.Names().empty());
}

TEST_F(FailureTest, ShrunkenSourceEndsTheRunWithWhatCame) {
    events.whenStatus = [this](int percent) {
        if (percent == 10) {
            folder.Write("movie.avi", TestBytes(33000));
        }
    };
    EXPECT_TRUE(Split(20000));
    EXPECT_EQ(out.Read("movie.avi_Part1") + out.Read("movie.avi_Part2"), TestBytes(33000));
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 3);
}

TEST_F(FailureTest, WhatReplacesTheSourceIsOnTheMediumBeforeItGoes) {
    const OrderedFileSystem& order = KeepOrder();
    EXPECT_TRUE(Split(30000));
    EXPECT_EQ(order.steps, (std::vector<std::string>{"prepare", "flush script", "flush volume",
                                                     "delete movie.avi", "commit"}));
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(FailureTest, SourceStaysWhereItsReplacementIsNotSafe) {
    OrderedFileSystem& order = KeepOrder();
    for (const char* step : {"prepare", "flush script", "flush volume"}) {
        SCOPED_TRACE(step);
        order.refused = step;
        ExpectFailure(30000);
        EXPECT_TRUE(folder.Has("movie.avi"));
        EXPECT_FALSE(out.Has("movie.avi_Part0.bat"));
    }
}

TEST_F(FailureTest, ArchiveGoesAndTheSettingDoesNotMatter) {
    const OrderedFileSystem& order = KeepOrder();
    Shared().Parameters().DeleteSource(0);
    EXPECT_TRUE(Split(30000, "Size", 0, true));
    EXPECT_EQ(order.steps, (std::vector<std::string>{"prepare", "delete movie.avi", "commit"}));
}

}  // namespace
}  // namespace zarn::testing
