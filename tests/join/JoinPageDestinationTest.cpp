#include <QTimer>

#include "join/FrmProgressJoin.h"
#include "support/forms/JoinPageFixture.h"

namespace zarn::testing {
namespace {

using enum BoxAnswer;

const Names question = {"Destination folder doesn't exist, create this new folder ?   "};
const Names badName = {"Invalid Characters in destination folder,\rPlease check."};

// The tests write and read paths with HERE for their folder.
class JoinPageDestination : public JoinPageFixture {
  protected:
    using JoinPageFixture::Write;
    void Write(std::string_view folder) { Write("txtDestinationFolderJoin", Long(folder)); }
    void OpenSet() { Write("txtFileToJoin", MakeSet()); }
    // A new page, with a stored folder.
    void Open(std::string_view stored) {
        Settings().DestinationFolderMerge(Long(stored));
        JoinPageFixture::Open();
        OpenSet();
    }
    // The destination, its box, the two buttons, and the stored folder.
    std::string State() {
        EXPECT_EQ(Settings().DestinationFolderUseMerge(), UsesJoinFolder() ? 1 : 0);
        return Short(Text("txtDestinationFolderJoin")) +
               (Colour("txtDestinationFolderJoin") == Red ? " red" : "") +
               (UsesJoinFolder() ? " ticked" : "") + (IsEnabled("CmdJoin") ? " join" : "") +
               (IsEnabled("CmdDestinationFolderJoin") ? " pick" : "") + ", " +
               Short(Settings().DestinationFolderMerge());
    }
    Names PanelCalls() {
        Names made = std::exchange(calls, {});
        std::ranges::transform(made, made.begin(), [this](auto& call) { return Short(call); });
        return made;
    }

    // Joins, and closes the window when it is done. Returns what the window was given.
    std::string Join() {
        std::string given;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto* form = qobject_cast<FrmProgressJoin*>(QApplication::activeModalWidget());
            if (form != nullptr && !form->Finished) {
                std::exchange(whileJoining, [](auto&) {})(*form);
            } else if (form != nullptr) {
                EXPECT_EQ(form->parentWidget(), &Page());
                EXPECT_EQ(Short(form->job.joinFile), R"(HERE\Movie.avi_Part0.bat)");
                given = Short(form->job.joinedFile) + "|" + form->JoinCRC;
                form->close();
            }
        });
        look.start(1);
        Click("CmdJoin");
        return given;
    }

    std::function<void(FrmProgressJoin&)> whileJoining = [](auto&) {};
};

TEST_F(JoinPageDestination, JudgesEveryChange) {
    OpenSet();
    Folder().MakeFolder("other");
    using Case = std::pair<const char*, const char*>;
    for (const auto& [text, state] :
         {Case("", " red join, "), Case(" C ", " C  red join, "), Case("ab", "ab red join, "),
          Case(R"(HERE\a*)", R"(HERE\a* red, )"), Case(R"(HERE\other)", R"(HERE\other join, )"),
          Case(R"(HERE\new\deep)", R"(HERE\new\deep join, )"),
          Case(R"(B:\x)", R"(B:\x red join, )"), Case(R"(HERE\)", R"(HERE\ ticked join, )")}) {
        Write(R"(HERE\)");
        Write(R"(HERE\other)");
        EXPECT_EQ(State(), R"(HERE\other join, )");
        Write(text);
        EXPECT_EQ(State(), state);
        EXPECT_EQ(Said(), Contains(text, "*") ? badName : Names());
    }
    // A folder is made while it is typed; what it was called in between stays.
    Write(R"(HERE\t)");
    QTest::keyClicks(&Widget("txtDestinationFolderJoin"), "wo");
    for (const char* made : {"new/deep", "t", "tw", "two"}) {
        EXPECT_TRUE(Folder().Has(made)) << made;
    }
    // The box knows the folder by its very spelling.
    Write("c" + Here().substr(1));
    EXPECT_FALSE(UsesJoinFolder());
}

TEST_F(JoinPageDestination, FollowsTheBoxAndWhatIsPicked) {
    Folder().MakeFolder("saved");
    Open(R"(HERE\saved)");
    for (const char* state :
         {R"(HERE\ ticked join, HERE\saved)", R"(HERE\saved join pick, HERE\saved)",
          R"(HERE\ ticked join, HERE\saved)"}) {
        EXPECT_EQ(State(), state);
        Click("ChkJoinDestination");
    }
    Click("ChkJoinDestination");
    // A tick by code stores itself and does no more.
    Write(R"(HERE\saved)");
    EXPECT_EQ(State(), R"(HERE\saved join, HERE\saved)");
    // The next file finds the choice of the last one, and the folder.
    Write("txtFileToJoin", "");
    OpenSet();
    EXPECT_EQ(State(), R"(HERE\saved join pick, HERE\saved)");
    // So does a reset, though it writes that folder.
    Settings().DestinationFolderUseMerge(1);
    Open(R"(HERE\saved)");
    Click("CmdResetJoin");
    EXPECT_EQ(State(), R"(HERE\saved ticked, HERE\saved)");
    // Or a folder that is picked.
    Settings().DestinationFolderUseMerge(0);
    Open("");
    Dialogs().answers = {std::nullopt, Long(R"(HERE\saved)")};
    for (const char* state : {" pick, ", R"(HERE\saved\ join pick, )"}) {
        Click("CmdDestinationFolderJoin");
        EXPECT_EQ(State(), state);
    }
    EXPECT_EQ(Dialogs().asked, Names(2, "Select Destination Folder|"));
}

TEST_F(JoinPageDestination, OffersAFolderAtTheEnterKey) {
    Folder().MakeFolder("saved");
    Open(R"(HERE\saved)");
    using Case = std::tuple<std::string_view, std::deque<BoxAnswer>, const char*>;
    for (const auto& [text, answers, state] :
         {Case("", {}, R"( red ticked join, HERE\saved)"),
          Case("ab", {}, R"(ab red join, HERE\saved)"),
          Case(R"(HERE\saved)", {}, R"(HERE\saved join, HERE\saved)"),
          Case(R"(B:\x)", {No}, R"(HERE\saved join, HERE\saved)"),
          Case(R"(HERE\gone\deep)", {No}, R"(HERE\saved join, HERE\saved)"),
          Case(R"(HERE\gone\deep)", {Yes}, R"(HERE\gone\deep join, HERE\gone\deep)"),
          Case(R"(B:\x)", {Yes}, R"(B:\x red, B:\x)")}) {
        Write(text);
        fs::remove_all(Folder().System("gone"));
        calls.clear();
        Boxes().answers = answers;
        QTest::keyClick(&Widget("txtDestinationFolderJoin"), Qt::Key_Return);
        EXPECT_EQ(State(), state);
        EXPECT_EQ(Said(), answers.empty() ? Names() : question);
        const bool isThere = text == R"(HERE\saved)";
        EXPECT_EQ(PanelCalls(), isThere ? Names({"black", R"(show HERE\saved)"}) : Names{"black"});
    }
}

TEST_F(JoinPageDestination, JoinsWhereTheUserWants) {
    Folder().MakeFolder("saved");
    // The answers are for a folder that vanishes before the click; then, where the file comes to
    // lie.
    using Case = std::tuple<std::string, std::deque<BoxAnswer>, std::string>;
    for (const auto& [text, answers, folder] :
         {Case(R"(HERE\)", {}, R"(HERE\)"), Case(R"(HERE\else)", {}, R"(HERE\else\)"),
          Case(R"(HERE\gone)", {Yes}, R"(HERE\gone\)"),
          Case(R"(HERE\lost)", {No}, R"(HERE\saved\)")}) {
        Settings().DestinationFolderUseMerge(1);
        Open(R"(HERE\saved\)");
        Write(text);
        if (!answers.empty()) {
            fs::remove_all(Folder().System(text.substr(5)));
        }
        Boxes().answers = answers;
        calls.clear();
        EXPECT_EQ(Join(), folder + "Movie.avi|- Not Present -");
        EXPECT_EQ(Said(), answers.empty() ? Names() : question);
        EXPECT_EQ(State(), Replace(text == folder ? "F ticked join, F" : "F join, F", "F", folder));
        EXPECT_EQ(PanelCalls(), answers.empty() ? Names{"show " + text} : Names());
        const std::string result = Replace(folder.substr(5), "\\", "/") + "Movie.avi";
        EXPECT_TRUE(Folder().Has(result) && Folder().Read(result).size() == 2003);
        fs::remove(Folder().System(result));
    }
}

// One box, whoever closed the window and when.
TEST_F(JoinPageDestination, TellsAJoinThatFailed) {
    const Names missing = {"The file was not made :\r" + Long(R"(HERE\Movie.avi)") +
                           "\r\rcannot copy \"Movie.avi_Part2\": File not found"};
    for (const bool closes : {false, true}) {
        OpenSet();
        fs::remove(Folder().System("Movie.avi_Part2"));  // since the analysis
        // A window that is closed before the script has started joins nothing.
        const std::function<void(FrmProgressJoin&)> close = [&](FrmProgressJoin& form) {
            if (Folder().Has("Movie.avi_Part0_TMP.bat")) {
                form.close();
            } else {
                whileJoining = close;
            }
        };
        if (closes) {
            whileJoining = close;
        }
        static_cast<void>(Join());
        EXPECT_EQ(Said(), missing);
    }
    OpenSet();
    Folder().MakeFolder("else/Movie.avi");
    Write(R"(HERE\else)");
    static_cast<void>(Join());
    EXPECT_EQ(Said(), Names{"The file was not made :\r" + Long(R"(HERE\else\Movie.avi)") +
                            "\r\rcannot replace \"" + Long(R"(HERE\else\Movie.avi)") +
                            "\": Path/File access error"
                            "\rThe joined file is complete: " +
                            Long(R"(HERE\Movie.avi)")});
}

TEST_F(JoinPageDestination, JoinsToAFolderAndWithAScriptOnly) {
    Open("");
    Write("ab");
    EXPECT_EQ(Join(), "");
    EXPECT_EQ(Said(), question);
    EXPECT_EQ(State(), " red join, ");
    fs::remove(Folder().System("Movie.avi_Part0.bat"));
    EXPECT_EQ(Join(), "");
    EXPECT_EQ(Said(), Names{"Join file is missing or is holded by another process    "});
    EXPECT_EQ(Colour("txtFileToJoin"), Red);
}

}  // namespace
}  // namespace zarn::testing
