#include <QTimer>
#include <deque>
#include <filesystem>

#include "join/FrmProgressJoin.h"
#include "support/forms/JoinPageFixture.h"

namespace zarn::testing {
namespace {

using Texts = std::vector<std::string>;

const Texts question = {"Destination folder doesn't exist, create this new folder ?   "};
const Texts badName = {"Invalid Characters in destination folder,\rPlease check."};

class JoinPageDestination : public JoinPageFixture {
  protected:
    using JoinPageFixture::Write;
    void Write(const std::string& folder) { Write("txtDestinationFolderJoin", folder); }
    std::string Destination() { return Text("txtDestinationFolderJoin"); }
    ColourValue DestinationColour() { return Colour("txtDestinationFolderJoin"); }
    bool CanJoin() { return IsEnabled("CmdJoin"); }
    void OpenSet() { Write("txtFileToJoin", MakeSet()); }
    // A new page, on which the stored folder is the destination.
    void Open(const std::string& stored) {
        Settings().DestinationFolderMerge(stored);
        JoinPageFixture::Open();
        OpenSet();
    }

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
        bool canJoin = true;  ///< after a text that can be joined to
        Texts boxes = {};
    };
    for (const Case& row :
         {Case{"", Red}, Case{" C ", Red}, Case{"ab", Red},
          Case{Here() + "a*", Red, false, badName}, Case{Here() + "other", Black},
          Case{Here() + R"(new\deep)", Black}, Case{R"(Q:\x)", Red}, Case{Here(), Black}}) {
        SCOPED_TRACE(row.text);
        Write(Here());
        Write(Here() + "other");
        ASSERT_TRUE(CanJoin() && !UsesJoinFolder());
        Write(row.text);
        EXPECT_EQ(DestinationColour(), row.colour);
        EXPECT_EQ(CanJoin(), row.canJoin);
        EXPECT_EQ(UsesJoinFolder(), row.text == Here());
        EXPECT_EQ(Settings().DestinationFolderUseMerge(), row.text == Here() ? 1 : 0);
        EXPECT_EQ(Said(), row.boxes);
    }
    // A folder is made while it is typed; what it was called in between stays.
    Write(Here() + "t");
    QTest::keyClicks(&Widget("txtDestinationFolderJoin"), "wo");
    for (const char* made : {"new/deep", "t", "tw", "two"}) {
        EXPECT_TRUE(Folder().Has(made)) << made;
    }
    // The box knows the folder by its very spelling.
    Write("c" + Here().substr(1));
    EXPECT_FALSE(UsesJoinFolder());
    EXPECT_TRUE(CanJoin());
    EXPECT_EQ(Settings().DestinationFolderMerge(), "");
}

TEST_F(JoinPageDestination, FollowsTheBox) {
    Folder().MakeFolder("saved");
    Open(Here() + "saved");
    EXPECT_EQ(Destination(), Here());
    for (const bool ticked : {false, true}) {
        Click("ChkJoinDestination");
        EXPECT_EQ(Destination(), ticked ? Here() : Here() + "saved");
        EXPECT_EQ(Settings().DestinationFolderUseMerge(), ticked ? 1 : 0);
        EXPECT_EQ(IsEnabled("CmdDestinationFolderJoin"), !ticked);
        EXPECT_TRUE(CanJoin());
    }
    // A tick by code stores itself and does no more.
    Write(Here() + "saved");
    EXPECT_FALSE(UsesJoinFolder() || IsEnabled("CmdDestinationFolderJoin"));
    // The next file finds the choice of the last one, and the folder.
    Write("txtFileToJoin", "");
    OpenSet();
    EXPECT_EQ(Destination(), Here() + "saved");
    EXPECT_TRUE(IsEnabled("CmdDestinationFolderJoin"));
}

TEST_F(JoinPageDestination, TakesAFolderThatIsPicked) {
    Folder().MakeFolder("saved");
    Settings().DestinationFolderUseMerge(0);
    Open("");
    EXPECT_FALSE(CanJoin());
    Dialogs().answers = {std::nullopt, Folder().Drive("saved")};
    for (const std::string& picked : {std::string(), Here() + R"(saved\)"}) {
        Click("CmdDestinationFolderJoin");
        EXPECT_EQ(Destination(), picked);
        EXPECT_EQ(CanJoin(), !picked.empty());
    }
    EXPECT_EQ(Dialogs().asked, Texts(2, "Select Destination Folder|"));
    EXPECT_EQ(Settings().DestinationFolderMerge(), "");
    EXPECT_TRUE(Said().empty());
}

TEST_F(JoinPageDestination, ResetKeepsTheStoredChoice) {
    for (const std::int16_t useMerge : {std::int16_t{1}, std::int16_t{0}}) {
        for (const std::string& merge : {std::string(), Here() + "saved", Here()}) {
            for (const std::string& typed : {Here() + "typed", Here(), std::string()}) {
                Settings().DestinationFolderUseMerge(0);
                Open(merge);
                Write(typed);
                Settings().DestinationFolderUseMerge(useMerge);
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
    const std::string gone = Here() + R"(gone\deep)";
    Open(saved);
    struct Case {
        std::string text;
        std::deque<BoxAnswer> answers;
        std::string textAfter, stored;
        ColourValue colour;
    };
    for (const Case& row : {Case{"", {}, "", saved, Red}, Case{"ab", {}, "ab", saved, Red},
                            Case{saved, {}, saved, saved, Black},
                            Case{R"(Q:\x)", {BoxAnswer::No}, saved, saved, Black},
                            Case{gone, {BoxAnswer::No}, saved, saved, Black},
                            Case{gone, {BoxAnswer::Yes}, gone, gone, Black},
                            Case{R"(Q:\x)", {BoxAnswer::Yes}, R"(Q:\x)", R"(Q:\x)", Red}}) {
        SCOPED_TRACE(row.text);
        Write(row.text);
        std::filesystem::remove_all(Folder().System("gone"));
        Panel().calls.clear();
        Boxes().answers = row.answers;
        QTest::keyClick(&Widget("txtDestinationFolderJoin"), Qt::Key_Return);
        EXPECT_EQ(Said(), row.answers.empty() ? Texts() : question);
        EXPECT_EQ(Destination(), row.textAfter);
        EXPECT_EQ(Settings().DestinationFolderMerge(), row.stored);
        EXPECT_EQ(Panel().calls,
                  row.text == saved ? Texts({"black", "show " + saved}) : Texts{"black"});
        EXPECT_EQ(DestinationColour(), row.colour);
        EXPECT_EQ(Folder().Has("gone/deep"), row.stored == gone);
    }
    EXPECT_FALSE(CanJoin());
}

TEST_F(JoinPageDestination, JoinsWhereTheUserWants) {
    Folder().MakeFolder("saved");
    const std::string saved = Here() + R"(saved\)";
    struct Case {
        const char* typed;
        std::deque<BoxAnswer> answers;  ///< of a folder that vanishes before the click
        const char* folder;             ///< where the file comes to lie
    };
    for (const Case& row :
         {Case{"", {}, ""}, Case{"else", {}, "else/"}, Case{"gone", {BoxAnswer::Yes}, "gone/"},
          Case{"lost", {BoxAnswer::No}, "saved/"}}) {
        SCOPED_TRACE(row.typed);
        Open(saved);
        Write(Here() + row.typed);
        if (!row.answers.empty()) {
            std::filesystem::remove_all(Folder().System(row.typed));
        }
        Boxes().answers = row.answers;
        Panel().calls.clear();
        Join();
        const bool isHere = *row.typed == '\0';
        EXPECT_EQ(Said(), row.answers.empty() ? Texts() : question);
        EXPECT_EQ(job.joinFile, Folder().Drive("Movie.avi_Part0.bat"));
        EXPECT_EQ(crc, "- Not Present -");
        EXPECT_EQ(job.joinedFile, Destination() + "Movie.avi");
        EXPECT_EQ(Settings().DestinationFolderMerge(), Destination());
        EXPECT_EQ(UsesJoinFolder(), isHere);
        EXPECT_EQ(Panel().calls,
                  row.answers.empty() ? Texts{"show " + Here() + row.typed} : Texts());
        const std::string result = row.folder + std::string("Movie.avi");
        EXPECT_TRUE(Folder().Has(result) && Folder().Read(result).size() == 2003);
        EXPECT_TRUE(CanJoin());
        std::filesystem::remove(Folder().System(result));
    }
}

TEST_F(JoinPageDestination, LooksAgainForTheScriptAlone) {
    Open("");
    std::filesystem::remove(Folder().System("Movie.avi_Part0.bat"));
    Join();
    EXPECT_EQ(Said(), Texts{"Join file is missing or is holded by another process    "});
    EXPECT_EQ(Colour("txtFileToJoin"), Red);
    EXPECT_TRUE(job.joinedFile.empty());
}

}  // namespace
}  // namespace zarn::testing
