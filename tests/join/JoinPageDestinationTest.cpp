#include <QTimer>
#include <filesystem>

#include "join/FrmProgressJoin.h"
#include "support/forms/JoinPageFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* Question = "Destination folder doesn't exist, create this new folder ?   ";
constexpr const char* BadName = "Invalid Characters in destination folder,\rPlease check.";

class JoinPageDestination : public JoinPageFixture {
  protected:
    using JoinPageFixture::Write;
    void Write(const std::string& folder) { Write("txtDestinationFolderJoin", folder); }
    std::string Destination() { return Text("txtDestinationFolderJoin"); }
    ColourValue DestinationColour() { return Colour("txtDestinationFolderJoin"); }
    bool CanJoin() { return IsEnabled("CmdJoin"); }
    void OpenSet() { Write("txtFileToJoin", MakeSet()); }

    // Joins, closes the window when it is done, and keeps what it was given.
    void Join() {
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [this] {
            auto* form = qobject_cast<FrmProgressJoin*>(QApplication::activeModalWidget());
            if (form != nullptr && form->Finished) {
                EXPECT_EQ(form->parentWidget(), &Page());
                job = form->job;
                crc = form->JoinCRC;
                form->close();
            }
        });
        look.start(1);
        job = {};
        Click("CmdJoin");
    }

    JoinJob job;
    std::string crc;
};

TEST_F(JoinPageDestination, JudgesEveryChange) {
    OpenSet();
    Folder().MakeFolder("other");
    struct Case {
        std::string text;
        ColourValue colour;
        bool canJoin;  ///< after a text that can be joined to
        std::string message;
    };
    for (const Case& row :
         {Case{"", Red, true, ""}, Case{"C", Red, true, ""}, Case{" C ", Red, true, ""},
          Case{"ab", Red, true, ""}, Case{"C:", Red, true, ""}, Case{R"(\x)", Red, true, ""},
          Case{Here() + "a*", Red, false, BadName}, Case{Here() + "other", Black, true, ""},
          Case{Here() + R"(new\deep)", Black, true, ""}, Case{R"(Q:\x)", Red, true, ""},
          Case{Here(), Black, true, ""}}) {
        SCOPED_TRACE(row.text);
        Write(Here());
        Write(Here() + "other");
        ASSERT_TRUE(CanJoin());
        ASSERT_FALSE(UsesJoinFolder());
        Write(row.text);
        EXPECT_EQ(DestinationColour(), row.colour);
        EXPECT_EQ(CanJoin(), row.canJoin);
        EXPECT_EQ(UsesJoinFolder(), row.text == Here());
        EXPECT_EQ(Settings().DestinationFolderUseMerge(), row.text == Here() ? 1 : 0);
        EXPECT_EQ(Said(), std::vector<std::string>(row.message.empty() ? 0 : 1, row.message));
    }
    // A folder is made while it is typed; what it was called in between stays.
    Write(Here() + "t");
    QTest::keyClicks(&Widget("txtDestinationFolderJoin"), "wo");
    for (const char* made : {"new/deep", "t", "tw", "two"}) {
        EXPECT_TRUE(Folder().Has(made)) << made;
    }
    // The box knows the folder by its very spelling.
    std::string spelled = Here();
    spelled.front() = 'c';
    Write(spelled);
    EXPECT_FALSE(UsesJoinFolder());
    EXPECT_TRUE(CanJoin());
    EXPECT_EQ(Settings().DestinationFolderMerge(), "");
}

TEST_F(JoinPageDestination, FollowsTheBox) {
    Folder().MakeFolder("saved");
    Settings().DestinationFolderMerge(Here() + "saved");
    Open();
    OpenSet();
    EXPECT_EQ(Destination(), Here());
    Click("ChkJoinDestination");
    EXPECT_EQ(Destination(), Here() + "saved");
    EXPECT_EQ(Settings().DestinationFolderUseMerge(), 0);
    EXPECT_TRUE(IsEnabled("CmdDestinationFolderJoin") && CanJoin());
    Click("ChkJoinDestination");
    EXPECT_EQ(Destination(), Here());
    EXPECT_EQ(Settings().DestinationFolderUseMerge(), 1);
    EXPECT_FALSE(IsEnabled("CmdDestinationFolderJoin"));
    // A tick by code stores itself and does no more.
    Write(Here() + "saved");
    EXPECT_FALSE(UsesJoinFolder() || IsEnabled("CmdDestinationFolderJoin"));
    // The next file finds the choice of the last one, and the folder.
    Write("txtFileToJoin", "");
    OpenSet();
    EXPECT_EQ(Destination(), Here() + "saved");
    EXPECT_TRUE(IsEnabled("CmdDestinationFolderJoin"));
    Settings().DestinationFolderMerge("");
    Open();
    OpenSet();
    EXPECT_FALSE(CanJoin());

    Dialogs().answers = {std::nullopt, Folder().Drive("saved")};
    Click("CmdDestinationFolderJoin");
    EXPECT_EQ(Destination(), "");
    Click("CmdDestinationFolderJoin");
    EXPECT_EQ(Destination(), Here() + R"(saved\)");
    EXPECT_EQ(Dialogs().asked, std::vector<std::string>(2, "Select Destination Folder|"));
    EXPECT_EQ(Settings().DestinationFolderMerge(), "");
    EXPECT_TRUE(CanJoin());
    EXPECT_TRUE(Said().empty());
}

TEST_F(JoinPageDestination, ResetKeepsTheStoredChoice) {
    for (const int useMerge : {1, 0}) {
        for (const std::string& merge : {std::string(), Here() + "saved", Here()}) {
            for (const std::string& typed : {Here() + "typed", Here(), std::string()}) {
                Settings().DestinationFolderMerge(merge);
                Settings().DestinationFolderUseMerge(0);
                Open();
                OpenSet();
                Write(typed);
                Settings().DestinationFolderUseMerge(static_cast<std::int16_t>(useMerge));
                Click("CmdResetJoin");
                EXPECT_EQ(Settings().DestinationFolderUseMerge(), useMerge);
                EXPECT_EQ(UsesJoinFolder(), useMerge == 1);
                EXPECT_EQ(Settings().DestinationFolderMerge(), merge);
                EXPECT_EQ(Destination(), merge);
            }
        }
    }
    EXPECT_TRUE(Said().empty());
}

TEST_F(JoinPageDestination, OffersAFolderAtTheEnterKey) {
    Folder().MakeFolder("saved");
    const std::string saved = Here() + "saved";
    Settings().DestinationFolderMerge(saved);
    OpenSet();
    struct Case {
        std::string text;
        std::optional<BoxAnswer> answer;
        std::string textAfter, stored;
        std::vector<std::string> panel;
        ColourValue colour;
    };
    const std::string gone = Here() + R"(gone\deep)";
    for (const Case& row :
         {Case{"", {}, "", saved, {"black"}, Red}, Case{"C", {}, "C", saved, {"black"}, Red},
          Case{"ab", {}, "ab", saved, {"black"}, Red},
          Case{saved, {}, saved, saved, {"black", "show " + saved}, Black},
          Case{R"(Q:\x)", BoxAnswer::No, saved, saved, {"black"}, Black},
          Case{gone, BoxAnswer::No, saved, saved, {"black"}, Black},
          Case{gone, BoxAnswer::Yes, gone, gone, {"black"}, Black},
          Case{R"(Q:\x)", BoxAnswer::Yes, R"(Q:\x)", R"(Q:\x)", {"black"}, Red}}) {
        SCOPED_TRACE(row.text);
        Write(row.text);
        std::filesystem::remove_all(Folder().System("gone"));
        Panel().calls.clear();
        Boxes().answers.clear();
        if (row.answer) {
            Boxes().answers = {*row.answer};
        }
        QTest::keyClick(&Widget("txtDestinationFolderJoin"), Qt::Key_Return);
        EXPECT_EQ(Said(), std::vector<std::string>(row.answer ? 1 : 0, Question));
        EXPECT_EQ(Destination(), row.textAfter);
        EXPECT_EQ(Settings().DestinationFolderMerge(), row.stored);
        EXPECT_EQ(Panel().calls, row.panel);
        EXPECT_EQ(DestinationColour(), row.colour);
        EXPECT_EQ(Folder().Has("gone/deep"), row.text == gone && row.answer == BoxAnswer::Yes);
    }
    EXPECT_FALSE(CanJoin());
}

TEST_F(JoinPageDestination, JoinsWhereTheUserWants) {
    const std::string whole = std::string(2000, 'a') + "end";
    Folder().MakeFolder("saved");
    const std::string saved = Here() + R"(saved\)";
    struct Case {
        std::string text;
        bool vanishes;  ///< before the click
        std::optional<BoxAnswer> answer;
        std::string folder;  ///< where the file comes to lie
    };
    for (const Case& row :
         {Case{Here(), false, {}, Here()}, Case{Here() + "else", false, {}, Here() + R"(else\)"},
          Case{Here() + "gone", true, BoxAnswer::Yes, Here() + R"(gone\)"},
          Case{Here() + "lost", true, BoxAnswer::No, saved}}) {
        SCOPED_TRACE(row.text);
        Settings().DestinationFolderMerge(saved);
        Open();
        OpenSet();
        Write(row.text);
        if (row.vanishes) {
            std::filesystem::remove_all(Folder().System(row.text.substr(Here().size())));
            Boxes().answers = {*row.answer};
        }
        Panel().calls.clear();
        Join();
        EXPECT_EQ(Said(), std::vector<std::string>(row.answer ? 1 : 0, Question));
        EXPECT_EQ(job.joinFile, Folder().Drive("Movie.avi_Part0.bat"));
        EXPECT_EQ(job.joinedFile, row.folder + "Movie.avi");
        EXPECT_EQ(crc, "- Not Present -");
        EXPECT_EQ(Destination(), row.folder);
        EXPECT_EQ(Settings().DestinationFolderMerge(), row.folder);
        EXPECT_EQ(UsesJoinFolder(), row.folder == Here());
        EXPECT_EQ(Panel().calls, row.vanishes ? std::vector<std::string>()
                                              : std::vector<std::string>{"show " + row.text});
        const std::string result =
            row.folder == Here()
                ? "Movie.avi"
                : row.folder.substr(Here().size(), row.folder.size() - Here().size() - 1) +
                      "/Movie.avi";
        EXPECT_TRUE(Folder().Has(result) && Folder().Read(result) == whole);
        EXPECT_TRUE(CanJoin());
        std::filesystem::remove(Folder().System(result));
    }
    // The script alone is looked for again.
    std::filesystem::remove(Folder().System("Movie.avi_Part0.bat"));
    Join();
    EXPECT_EQ(Said(),
              std::vector<std::string>{"Join file is missing or is holded by another process    "});
    EXPECT_EQ(Colour("txtFileToJoin"), Red);
    EXPECT_TRUE(job.joinedFile.empty());
}

}  // namespace
}  // namespace zarn::testing
