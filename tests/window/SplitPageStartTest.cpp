#include <QApplication>
#include <QTextEdit>
#include <QTimer>
#include <functional>

#include "controls/GuardedApplication.h"
#include "controls/XP_ProgressBar.h"
#include "engine/FrmProgress.h"
#include "engine/FrmRemovables.h"
#include "support/WatchedFileSystem.h"
#include "support/forms/SplitPageFixture.h"
#include "window/FakeVolumes.h"

namespace zarn::testing {
namespace {

constexpr const char* NoLevel =
    "You Compression Level is not configured, \rdo you want to configure it now ?";
constexpr const char* NewFolder =
    "Destination folder doesn't exist,\rdo you want to create this new folder ?   ";
constexpr const char* NoSource = "Split file is missing or is holded by another process    ";
constexpr const char* NoFolder = "Destination folder is missing    ";

/// A disk with room for so many bytes more.
class FillingFile : public ForwardingLargeFile {
  public:
    FillingFile(std::unique_ptr<LargeFileAccess> real, std::size_t& room)
        : ForwardingLargeFile(std::move(real)), room_(room) {}
    void Write(std::span<const std::byte> bytes) override {
        if (bytes.size() > room_) {
            throw RuntimeError(ErrorNumber::DiskFull);
        }
        room_ -= bytes.size();
        ForwardingLargeFile::Write(bytes);
    }

  private:
    std::size_t& room_;
};

class SplitPageStart : public SplitPageFixture {
  protected:
    void Take(const std::string& bytes, const std::string& name = "film.mkv") {
        Folder().Write(name, bytes);
        Page().OpenSource(Folder().Drive(name));
    }

    // Presses start, whatever the page thinks of it, and Done when the job has come to its end.
    void Start() {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [this] { Poll(); });
        poll.start(0);
        Widget("CmdStartSplitt").setEnabled(true);
        Click("CmdStartSplitt");
        GuardedApplication::RethrowRaised();
    }
    std::vector<std::string> BoxTexts() {
        std::vector<std::string> texts;
        for (const BoxMessage& box : Boxes().shown) {
            texts.push_back(box.text);
        }
        return texts;
    }
    std::string Joined(std::size_t parts, const std::string& name = "film.mkv") {
        std::string bytes;
        for (std::size_t part = 1; part <= parts; ++part) {
            bytes += Folder().Read(name + "_Part" + std::to_string(part));
        }
        return bytes;
    }
    bool HasParts() { return Folder().Has("film.mkv_Part1"); }

    int jobs = 0;
    std::function<void(FrmProgress&)> whileSplitting;
    std::function<void(FrmRemovables&)> whenAsked;

  private:
    void Poll() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* prompt = qobject_cast<FrmRemovables*>(window);
            auto* progress = qobject_cast<FrmProgress*>(window);
            if (prompt != nullptr && prompt->isVisible()) {
                whenAsked(*prompt);
            } else if (progress != nullptr && progress->isVisible()) {
                Poll(*progress);
            }
        }
    }
    void Poll(FrmProgress& progress) {
        auto* button = progress.findChild<QAbstractButton*>("CmdCancel");
        if (button->text().startsWith("&Done (")) {
            ++jobs;
            button->click();
        } else if (whileSplitting) {
            whileSplitting(progress);
        }
    }
};

TEST_F(SplitPageStart, ShowsTheCommandLineOfWhatIsSetUp) {
    Settings().CompressLevel(7);
    const std::string source = OpenSource(5'000'000);
    Find<QAbstractButton>("ChkDestinationFolder").setChecked(false);
    Type("txtDestinationFolder", Folder().Drive());
    const std::string paths = "ZarnFileSplitter /F=" + source + " /D=" + Folder().Drive() + " ";
    const auto shown = [this] {
        std::string line;
        QTimer::singleShot(0, [&line] {
            QWidget* form = QApplication::activeModalWidget();
            const auto lines = form->findChild<QTextEdit*>("RTB")->toPlainText().split('\n');
            line = FromQt(lines.value(5));
            QTest::mouseClick(form->findChild<QWidget*>("CmdHelp"), Qt::LeftButton);
            form->close();
        });
        Click("cmdCreateCommand");
        EXPECT_EQ(Frame().calls.back(), "help");
        return line;
    };
    Click("OptSize");
    Click("OptMB");
    PartSize().WriteText("1.44 MB - Diskette");
    Click("ChkDeleteSource");
    EXPECT_EQ(shown(), paths + "/PS=1.44MB /DS ");
    Click("ChkDeleteSource");
    Click("ChkDeleteJoin");
    Click("OptParts");
    Type("txtPartsNumber", "12");
    Click("ChkSFV");
    EXPECT_EQ(shown(), paths + "/PN=12 /SFV /DP ");
    Click("ChkSFV");
    Click("ChkDeleteJoin");
    Click("ChkCompress");
    EXPECT_EQ(shown(), paths + "/PN=12 /C /CL=7 ");
}

TEST_F(SplitPageStart, StopsAtTheFirstFailedCheck) {
    Take(TestBytes(2 * Megabyte));
    Start();
    EXPECT_EQ(BoxTexts(), std::vector<std::string>{
                              "Invalid pieces size, please type or select one.           "});
    PartSize().WriteText("Type Custom Size ...");
    Start();
    EXPECT_EQ(PartSize().Text(), "");
    PartSize().WriteText("3");
    Start();
    EXPECT_EQ(BoxTexts().back(), "Piece Size must be smaller than Source file size   ");
    PartSize().SelectRow(2);
    Start();
    EXPECT_EQ(BoxTexts().back(), "Piece Size must be smaller than Source file size   ");
    Field("txtDestinationFolder").setText("C");
    Start();
    EXPECT_EQ(BoxTexts().back(), "Please select a valid Destination Folder.           ");
    EXPECT_EQ(Boxes().shown.size(), 4U);
    EXPECT_FALSE(HasParts());
    EXPECT_EQ(Settings().ComboSize(), "");
}

// Neither answer ends the click: what follows looks at the folder that is there then.
TEST_F(SplitPageStart, OffersAMissingFolderAndGoesOn) {
    Settings().DestinationFolderUseSource(0);
    for (const bool savedExists : {true, false}) {
        for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
            const std::string saved = Folder().Drive("saved") + "\\";
            const std::string made = Folder().Drive("made");
            Settings().DestinationFolder(saved);
            Open();
            Take(TestBytes(Megabyte / 2));
            PartSize().WriteText("0.25");
            Field("txtDestinationFolder").setText(ToQt(made));
            if (!savedExists) {
                std::filesystem::remove_all(Folder().System("saved"));
            }
            Boxes().shown.clear();
            Boxes().answers = {answer};
            Start();
            const bool yes = answer == BoxAnswer::Yes;
            std::vector<std::string> boxes = {NewFolder};
            if (!yes && !savedExists) {
                boxes.emplace_back(NoFolder);
            }
            EXPECT_EQ(BoxTexts(), boxes);
            EXPECT_EQ(Text("txtDestinationFolder"), yes ? made : saved);
            EXPECT_EQ(Settings().DestinationFolder(), yes ? made : saved);
            EXPECT_EQ(Folder().Has("made/film.mkv_Part2"), yes);
            EXPECT_EQ(Folder().Has("saved/film.mkv_Part2"), !yes && savedExists);
            EXPECT_EQ(Colour("txtDestinationFolder"), !yes && !savedExists ? Red : Black);
            std::filesystem::remove_all(Folder().System("made"));
            std::filesystem::remove_all(Folder().System("saved"));
        }
    }
    EXPECT_EQ(jobs, 3);
}

TEST_F(SplitPageStart, MakesAllTheLastChecks) {
    Settings().CompressLevel(0);
    Settings().CompressDestination(1);
    Take(TestBytes(Megabyte));
    std::filesystem::remove(Folder().System("film.mkv"));
    Click("OptParts");
    Field("txtPartsNumber").setText("2");
    const std::vector<std::string> all = {NoLevel, NoSource, NoFolder};
    for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No}) {
        Boxes().shown.clear();
        Field("txtDestinationFolder").setText(R"(Q:\x)");
        Boxes().answers = {answer};
        Frame().calls.clear();
        Start();
        EXPECT_EQ(BoxTexts(), all);
        EXPECT_EQ(Colour("txtSourceFile"), Red);
        EXPECT_EQ(Colour("txtDestinationFolder"), Red);
        const bool yes = answer == BoxAnswer::Yes;
        EXPECT_EQ(Frame().calls, std::vector<std::string>(yes ? 1 : 0, "compression"));
        EXPECT_EQ(Button("ChkCompress").isChecked(), yes);
    }
    EXPECT_EQ(Settings().CompressDestination(), 0);
    EXPECT_EQ(LabelText("txtFreeSpaceDest"), "");
    EXPECT_EQ(jobs, 0);
}

TEST_F(SplitPageStart, SplitsBySizeAndByCount) {
    const std::string film = TestBytes(2 * Megabyte + 1000);
    Take(film);
    PartSize().WriteText("0.75 MB");
    Start();
    EXPECT_TRUE(Joined(3) == film);
    EXPECT_EQ(Folder().Read("film.mkv_Part1").size(), 786432U);
    EXPECT_FALSE(Folder().Has("film.mkv_Part4"));
    EXPECT_TRUE(Folder().Has("film.mkv_Part0.bat"));
    EXPECT_FALSE(Folder().Has("film.mkv_Part0.sfv"));
    EXPECT_EQ(Settings().ComboSize(), "0.75 MB|786432");
    EXPECT_EQ(PartSize().Text(), "0.75 MB");
    EXPECT_EQ(Frame().calls.back(), "title");
    // The page is ready for another job on the same file.
    Click("OptParts");
    Field("txtPartsNumber").setText("4");
    Click("ChkSFV");
    Start();
    EXPECT_TRUE(Joined(4) == film);
    const std::string sfv = Folder().Read("film.mkv_Part0.sfv");
    for (const char* part : {"film.mkv_Part1 ", "film.mkv_Part4 "}) {
        EXPECT_NE(sfv.find(part), std::string::npos) << sfv;
    }
    EXPECT_TRUE(Boxes().shown.empty());
    EXPECT_EQ(jobs, 2);
}

// A configured password compresses although the box is clear.
TEST_F(SplitPageStart, CompressesForAPassword) {
    constexpr std::size_t MethodOffset = 8;
    constexpr char Encrypted = 99;
    Folder().MakeFolder("tmp");
    Settings().TemporaryFolder(Folder().Drive("tmp") + "\\");
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("secret");
    Take(TestBytes(Megabyte));
    Page().SecurityOption(true);
    PartSize().WriteText("0.5");
    Start();
    EXPECT_EQ(jobs, 1);
    EXPECT_TRUE(Boxes().shown.empty());
    const std::string zip = Joined(2, "film.zip");
    EXPECT_TRUE(zip.starts_with("PK\x03\x04"));
    EXPECT_EQ(zip[MethodOffset], Encrypted);
    EXPECT_FALSE(Folder().Has("tmp/film.zip"));
}

TEST_F(SplitPageStart, IsCancelledInTheMiddle) {
    int cancelled = 0;
    whileSplitting = [&cancelled](FrmProgress& progress) {
        constexpr int Middle = 30;
        auto* button = progress.findChild<QAbstractButton*>("CmdCancel");
        const int percent = progress.findChild<XP_ProgressBar*>("XP_ProgressBar1")->Value();
        if (progress.CancelPending && progress.JobEnded && !button->isEnabled()) {
            progress.close();
        } else if (button->isVisible() && percent >= Middle) {
            ++cancelled;
            button->click();
        }
    };
    Take(TestBytes(8 * Megabyte));
    PartSize().WriteText("1");
    Start();
    EXPECT_EQ(cancelled, 1);
    EXPECT_EQ(jobs, 0);
    EXPECT_EQ(Folder().Names(), std::vector<std::string>{"film.mkv"});
    EXPECT_EQ(Settings().ComboSize(), "1 MB|1048576");
    EXPECT_EQ(Frame().calls.back(), "title");
    EXPECT_TRUE(Widget("OptSize").isEnabled());
}

// The box is the only sign of it: the window says Done.
TEST_F(SplitPageStart, EndsOnAFullDisk) {
    std::size_t room = Megabyte * 3 / 2;
    auto watched = std::make_unique<WatchedFileSystem>(std::move(PlatformParts().fileSystem));
    watched->wrap = [&room](auto real) {
        return std::make_unique<FillingFile>(std::move(real), room);
    };
    PlatformParts().fileSystem = std::move(watched);
    Take(TestBytes(3 * Megabyte));
    PartSize().WriteText("1");
    Start();
    ASSERT_EQ(Boxes().shown.size(), 1U);
    EXPECT_TRUE(Boxes().shown[0].text.starts_with("Write error in file"));
    EXPECT_EQ(jobs, 1);
    EXPECT_TRUE(HasParts());
    EXPECT_FALSE(Folder().Has("film.mkv_Part0.bat"));
    EXPECT_EQ(Text("txtSourceFile"), Folder().Drive("film.mkv"));
}

TEST_F(SplitPageStart, SaysThatTheSourceWasDeleted) {
    const std::string film = TestBytes(Megabyte);
    Take(film);
    Click("ChkDeleteSource");
    PartSize().WriteText("0.5");
    Start();
    EXPECT_TRUE(Joined(2) == film);
    EXPECT_FALSE(Folder().Has("film.mkv"));
    EXPECT_EQ(Text("txtSourceFile"), "-- File was deleted --");
    EXPECT_EQ(Colour("txtSourceFile"), Red);
    EXPECT_FALSE(Widget("OptSize").isEnabled());
    EXPECT_FALSE(CanStart());
    EXPECT_NE(Frame().calls.back(), "title");
}

TEST_F(SplitPageStart, FillsThreeDiskettes) {
    constexpr std::size_t DiskettePart = 1457275;
    constexpr std::uint64_t Room = 1457664;
    TestFolder drive;
    drive.MakeFolder("a");
    drive.MakeFolder("config");
    drive.Write("config/drives", "A: removable " + drive.System("a"));
    Platform real = MakeLinuxPlatform(FoldersIn(drive));
    PlatformParts().fileSystem = std::move(real.fileSystem);
    auto volumes = std::make_unique<FakeVolumes>(std::move(real.volumes));
    volumes->volumes['A'] = {DriveType::Removable, Room, Room};
    PlatformParts().volumes = std::move(volumes);

    std::vector<std::string> media;
    const auto takeOut = [&] {
        for (const auto& entry : std::filesystem::directory_iterator(drive.System("a"))) {
            const std::string name = entry.path().filename();
            std::filesystem::rename(entry.path(), Folder().System(name));
            media.push_back(name);
        }
    };
    whenAsked = [&](FrmRemovables& prompt) {
        EXPECT_EQ(prompt.totalParts, 3);
        takeOut();
        prompt.findChild<QAbstractButton*>("CmdOK")->click();
    };
    const std::string film = TestBytes(3 * DiskettePart - 100000);
    Take(film);
    Field("txtDestinationFolder").setText(R"(A:\)");
    EXPECT_EQ(PartSize().Text(), "1.44 MB - Diskette");
    Start();
    takeOut();
    EXPECT_EQ(jobs, 1);
    EXPECT_TRUE(Boxes().shown.empty());
    EXPECT_EQ(media.size(), 4U);
    EXPECT_TRUE(Joined(3) == film);
    EXPECT_TRUE(Folder().Has("film.mkv_Part0.bat"));
    EXPECT_EQ(PartSize().Text(), "1.44 MB");
}

}  // namespace
}  // namespace zarn::testing
