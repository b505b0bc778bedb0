#include <QTextEdit>

#include "controls/GuardedApplication.h"
#include "support/Soon.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* AskStart =
    "Destination folder doesn't exist,\rdo you want to create this new folder ?   ";
constexpr const char* AskLevel =
    "You Compression Level is not configured, \rdo you want to configure it now ?";
constexpr const char* NoSource = "Split file is missing or is holded by another process    ";
constexpr const char* NoFolder = "Destination folder is missing    ";

class SplitPageStart : public SplitPageFixture {
  protected:
    void Start() {
        Widget("CmdStartSplitt").setEnabled(true);
        jobs += RunJobs(Widget("CmdStartSplitt"));
        GuardedApplication::RethrowRaised();
    }

    int jobs = 0;
};

TEST_F(SplitPageStart, ShowsTheCommandLineOfWhatIsSetUp) {
    OpenSource(5'000'000);
    Click("ChkSFV");
    Click("ChkDeleteSource");
    Click("OptParts");
    Type("txtPartsNumber", "12");
    const Soon look([this] {
        QWidget* form = QApplication::activeModalWidget();
        const auto lines = form->findChild<QTextEdit*>("RTB")->toPlainText().split('\n');
        EXPECT_EQ(Short(FromQt(lines.value(5))),
                  R"(ZarnFileSplitter /F=HERE\film.mkv /D=HERE\ /PN=12 /SFV /DS )");
        form->close();
    });
    Click("cmdCreateCommand");
}

// Neither answer ends the click: what follows looks at the folder that is there then.
TEST_F(SplitPageStart, OffersAMissingFolderAndGoesOn) {
    using enum BoxAnswer;
    Settings().DestinationFolderUseSource(0);
    using Case = std::tuple<BoxAnswer, bool, std::string, const char*, Names>;
    for (const auto& [answer, savedExists, told, folder, parts] :
         {Case(Yes, false, "", R"(HERE\made\ black)", {"made"}),
          Case(No, true, "", R"(HERE\saved\ black)", {"saved"}),
          Case(No, false, NoFolder, R"(HERE\saved\ red)", {})}) {
        Settings().DestinationFolder(Long(R"(HERE\saved\)"));
        Open();
        OpenSource(500'000);
        PartSize().WriteText("0.25");
        Write("txtDestinationFolder", Long(R"(HERE\made\)"));
        if (!savedExists) {
            fs::remove_all(Folder().System("saved"));
        }
        Boxes().answers = {answer};
        Start();
        EXPECT_EQ(Told(), AskStart + told);
        EXPECT_EQ(Short(Text("txtDestinationFolder") + " " + ColourName("txtDestinationFolder")),
                  folder);
        for (const char* name : {"made", "saved"}) {
            EXPECT_EQ(Folder().Has(name + std::string("/film.mkv_Part2")), parts == Names{name});
            fs::remove_all(Folder().System(name));
        }
    }
}

TEST_F(SplitPageStart, EndsAtEachOfTheLastChecksAndMakesThemAll) {
    using enum BoxAnswer;
    using Case = std::tuple<const char*, BoxAnswer, std::string, const char*>;
    for (const auto& [missing, answer, told, state] :
         {Case("level", Yes, AskLevel, "black black ready start, compress, compression"),
          Case("source", Yes, NoSource, "red black ready start, compress"),
          Case("folder", Yes, NoFolder, "black red ready start, compress"),
          Case("level source folder", No, std::string(AskLevel) + NoSource + NoFolder,
               "red red ready start")}) {
        Settings().CompressLevel(Contains(missing, "level") ? 0 : 1);
        Settings().CompressDestination(1);
        Open();
        OpenSource(1'000'000);
        Write("txtDestinationFolder", Contains(missing, "folder") ? R"(B:\x)" : Here());
        if (Contains(missing, "source")) {
            fs::remove(Folder().System("film.mkv"));
        }
        PartSize().WriteText("0.25");
        Boxes().answers = {answer};
        calls.clear();
        Start();
        EXPECT_EQ(Told(), told);
        EXPECT_EQ(State() + (IsChecked("ChkCompress") ? ", compress" : "") +
                      (calls == Names{"compression"} ? ", compression" : ""),
                  state);
    }
    PartSize().WriteText("Type Custom Size ...");
    Start();
    EXPECT_EQ(PartSize().Text() + Told(), "");
    Start();
    EXPECT_EQ(Told(), "Invalid pieces size, please type or select one.           ");
    EXPECT_EQ(jobs, 0);
}

TEST_F(SplitPageStart, AJobRemembersItsSizeAndLeavesThePlainNumber) {
    Settings().ComboSize("1 MB|1048576");
    OpenSource(4'000'000);
    Write("txtPartsNumber", "4");
    using Case = std::tuple<const char*, const char*, std::size_t, const char*, const char*>;
    for (const auto& [mode, typed, bytes, text, stored] :
         {Case("OptSize", "1.44 MB - Diskette", 1454236, "1.44 MB", "1 MB|1048576"),
          Case("OptSize", "1.44 MB", 1509949, "1.44 MB", "1 MB|1048576"),
          Case("OptSize", "2mb", 2097152, "2 MB", "2 MB|2097152;1 MB|1048576"),
          Case("OptParts", "0.25", 1000000, "0.25", "2 MB|2097152;1 MB|1048576")}) {
        PartSize().WriteText(typed);
        Button(mode).setChecked(true);
        Start();
        EXPECT_EQ(Folder().Read("film.mkv_Part1").size(), bytes);
        EXPECT_EQ(PartSize().Text(), text);
        EXPECT_EQ(Settings().ComboSize(), stored) << text;
        EXPECT_EQ(calls.back(), "title");
    }
    EXPECT_FALSE(Folder().Has("film.mkv_Part0.sfv"));
    calls.clear();
    Click("ChkSFV");
    Click("ChkDeleteSource");
    Start();
    EXPECT_TRUE(Folder().Has("film.mkv_Part0.sfv") && Folder().Has("film.mkv_Part4"));
    EXPECT_FALSE(Folder().Has("film.mkv"));
    EXPECT_EQ(Text("txtSourceFile") + Told(), "-- File was deleted --");
    EXPECT_EQ(State(), "red black ");
    EXPECT_NE(calls.back(), "title");
    EXPECT_EQ(jobs, 5);
}

}  // namespace
}  // namespace zarn::testing
