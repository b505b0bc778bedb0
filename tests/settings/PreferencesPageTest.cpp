#include <QTabBar>

#include "controls/HSlider.h"
#include "controls/PanelText.h"
#include "settings/PreferencesPage.h"
#include "support/Soon.h"
#include "support/forms/PageFixture.h"

namespace zarn::testing {
namespace {

// The page in a window that only notes what it is asked for. The tests write and read paths with
// HERE for their folder and SYSTEM for the system's one.
struct PreferencesPageTest : public PageFixture<PreferencesPage>, public PreferencesFrame {
    void UntickCompress() override { calls += ", untick"; }
    void ShowDestinationUnit(std::string_view path) override {
        calls.append(", unit ").append(path);
    }
    void ReturnToPrompt() override { calls += ", return"; }
    void UpdateSummary() override { calls += ", summary"; }

    std::unique_ptr<PreferencesPage> Make() override {
        return std::make_unique<PreferencesPage>(Shared(), Dialogs(), *this, nullptr);
    }
    void BringUp(PreferencesPage& page) override { page.ShowSettingsTab(tab); }
    void Open(std::string_view name) {
        tab = name;
        PageFixture::Open();
    }
    HSlider& Slider() { return Find<HSlider>("Slider1"); }
    void Click(const char* name) { Button(name).click(); }
    bool CanApply() {
        EXPECT_EQ(IsEnabled("CmdApply"), IsEnabled("CmdUndo"));
        return IsEnabled("CmdApply");
    }
    std::string Short(std::string_view text) {
        return PageFixture::Short(Replace(text, Shared().Files().GetWindowsTempPath(), "SYSTEM"));
    }

    QTabBar& Tabs() { return Find<QTabBar>("TabStrip1"); }
    bool ShowsGeneral() { return Widget("Panel1Settings").isVisible(); }
    // The folder, its colour, what is ticked and enabled, and whose figures are shown.
    std::string General() {
        return Short(Text("txtTemporaryFolder")) + " " + ColourName("txtTemporaryFolder") +
               (IsChecked("ChkWindowsTempFolder") ? " ticked" : "") +
               (IsEnabled("CmdTemporaryFolder") ? " pick" : "") + (CanApply() ? " apply" : "") +
               (LabelText("txtDriveCapacity") == "kept" ? " kept" : "");
    }
    // The level, the passwords if they are asked for, and their fields.
    std::string Compression() {
        EXPECT_EQ(IsEnabled("txtPassword"), IsChecked("ChkSecurity"));
        return LabelText("CompressionLabel") + (IsEnabled("txtPassword") ? " secured " : " ") +
               Text("txtPassword") + "|" + Text("txtPassword2");
    }
    void WritePasswords(const std::string& password, const std::string& confirmation) {
        Write("txtPassword", password);
        Write("txtPassword2", confirmation);
    }
    // What the page has asked of the window since the last call.
    std::string Calls() { return Short(std::exchange(calls, {})); }
    std::string tab = "GENERAL";
    std::string calls;
};

TEST_F(PreferencesPageTest, ShowsATabAndLosesALevelThatWasNotApplied) {
    Open("GENERAL");
    EXPECT_TRUE(ShowsGeneral());
    Tabs().setCurrentIndex(1);
    EXPECT_FALSE(ShowsGeneral());
    for (const int level : {1, 8, 0}) {
        Slider().Value(level);
        EXPECT_EQ(CanApply(), level != 8);
    }
    Button("ChkSecurity").setChecked(true);
    Write("txtPassword", "new");
    EXPECT_EQ(Compression(), "Level 0 (No Compression) secured new|");
    Tabs().setCurrentIndex(0);
    EXPECT_EQ(Compression(), "Level 8 (High) |");
    // Another tab while the page is dirty, whose refresh lets events run.
    Write("txtTemporaryFolder", Folder().Drive());
    const Soon turn([this] { Tabs().setCurrentIndex(0); });
    Page().ShowSettingsTab("COMPRESSION");
    EXPECT_TRUE(ShowsGeneral());
    EXPECT_EQ(General(), "HERE black pick apply");
}

TEST_F(PreferencesPageTest, SaysByColourWhatAFolderIs) {
    Folder().MakeFolder("other");
    const std::string invalid =
        "Invalid Characters in Temporary folder,\rPlease check, previous selection will be assumed";
    using Case = std::tuple<std::string, std::string, std::string, std::string>;
    for (const auto& [path, colour, state, said] :
         {Case(R"(HERE\other)", "black", " pick apply", ""),
          Case(R"(HERE\new)", "blue", " ticked apply kept", ""),
          Case(R"(HERE\ne?w)", "red", " ticked kept", invalid),
          Case("tmp", "red", " ticked kept", "")}) {
        Open("GENERAL");
        EXPECT_EQ(General(), "SYSTEM black ticked");
        Find<PanelText>("txtDriveCapacity").setText("kept");
        Field("txtTemporaryFolder").setFocus();
        Write("txtTemporaryFolder", Long(path));
        EXPECT_EQ(General(), path + " " + colour + state);
        EXPECT_EQ(Told(), said);
        Widget("ChkWindowsTempFolder").setFocus();
        EXPECT_EQ(General(), path + (path == "tmp" ? " red" : " black") + state);
    }
}

TEST_F(PreferencesPageTest, TakesTheSystemsFolderOrOneThatIsPicked) {
    Settings().TemporaryFolder(Long(R"(HERE\)"));
    Folder().MakeFolder("picked");
    Dialogs().answers = {std::nullopt, Long(R"(HERE\picked)"), Long(R"(HERE\)")};
    Open("GENERAL");
    for (const auto& [button, shown] :
         {std::pair("ChkWindowsTempFolder", "SYSTEM black ticked apply"),
          std::pair("ChkWindowsTempFolder", "SYSTEM black pick apply"),
          std::pair("CmdTemporaryFolder", "SYSTEM black pick apply"),
          std::pair("CmdTemporaryFolder", R"(HERE\picked\ black pick apply)"),
          std::pair("CmdTemporaryFolder", R"(HERE\ black pick)")}) {
        Click(button);
        EXPECT_EQ(General(), shown);
    }
    EXPECT_EQ(Short(Dialogs().asked.back()), R"(Select Temporary Folder|HERE\)");
}

TEST_F(PreferencesPageTest, WarnsOnlyWhileThePasswordIsTheStoredOne) {
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("secret");
    Open("COMPRESSION");
    const std::string differ = " Password and confirmation do not match ";
    std::string security;
    QObject::connect(&Page(), &PreferencesPage::SecurityChanged, &Page(),
                     [&security](bool on) { security += on ? "on " : "off "; });
    for (const auto& [password, confirmation, isWrong, canApply] :
         {std::tuple("secret", "other", true, false), std::tuple("secret", "secret", false, false),
          std::tuple("new", "old", false, true), std::tuple("secret", "old", true, false)}) {
        WritePasswords(password, confirmation);
        EXPECT_EQ(LabelText("lblPasswordMatch"), isWrong ? differ : "") << password << confirmation;
        EXPECT_EQ(Widget("lblPasswordMatch").isVisible(), isWrong);
        EXPECT_EQ(Colour("txtPassword2"), isWrong ? WarningRed : Black);
        EXPECT_EQ(CanApply(), canApply);
    }
    for (const bool ticked : {false, true}) {
        Click("ChkSecurity");
        EXPECT_EQ(IsEnabled("txtPassword2"), ticked);
        EXPECT_EQ(LabelText("lblPasswordMatch").empty(), !ticked);
    }
    EXPECT_EQ(security, "off on ");
    Widget("txtPassword2").setFocus();
    Field("txtPassword").setFocus();
    EXPECT_TRUE(Field("txtPassword").hasSelectedText());
}

TEST_F(PreferencesPageTest, StoresEverythingAndThePasswordScrambled) {
    Open("COMPRESSION");
    Click("ChkSecurity");
    Slider().Value(3);
    WritePasswords("Grüße 7", "Grüße 7");
    Write("txtTemporaryFolder", Folder().Drive());
    Click("CmdApply");
    EXPECT_EQ(Told() + Calls(), ", unit HERE, return, summary");
    EXPECT_FALSE(Contains(StoreFile(), "Grüße"));
    for (const char* next : {"", "COMPRESSION"}) {
        EXPECT_EQ(General(), "HERE black pick");
        EXPECT_EQ(Compression(), "Level 3 (Low Compression) secured Grüße 7|Grüße 7");
        Open(next);
    }
    EXPECT_EQ(Field("txtPassword").echoMode(), QLineEdit::Password);
    // Without security no password stays; without compression nothing is compressed.
    Button("ChkSecurity").setChecked(false);
    Slider().Value(0);
    Page().CmdApply_Click();
    EXPECT_TRUE(StoredPreferences(Settings()) == (Preferences{Folder().Drive(), 0, false, ""}));
    EXPECT_TRUE(Calls().starts_with(", untick"));
    EXPECT_EQ(Compression(), "Level 0 (No Compression) |");
}

TEST_F(PreferencesPageTest, SettlesTheFolderWhenAppliedAndAtTheEnterKey) {
    Folder().Write("plain", "");
    const std::string made = R"(HERE\new\deep)";
    constexpr BoxAnswer Yes = BoxAnswer::Yes;
    // The text, and then: the text, the stored folder and level, the box, the window's steps.
    using Case = std::tuple<std::string, BoxAnswer, std::string, std::string>;
    for (const auto& [text, answer, atEnter, applied] :
         {Case("HERE", Yes, R"(HERE, C:\ 8, unit HERE)",
               "HERE, HERE 5, unit HERE, return, summary"),
          Case(" ", Yes, R"( , C:\ 8)", "SYSTEM, SYSTEM 5, return, summary"),
          Case(R"(HERE\n*)", Yes, R"(SYSTEM, C:\ 8)", "SYSTEM, SYSTEM 5, return, summary"),
          Case(R"(HERE\no)", BoxAnswer::No, R"(SYSTEM, C:\ 8, asked)",
               "SYSTEM, SYSTEM 5, asked, return, summary"),
          Case(made, Yes, made + ", " + made + " 8, asked", made + ", " + made + " 5, asked"),
          Case(R"(HERE\plain\x)", Yes, R"(SYSTEM, C:\ 8, asked)", R"(SYSTEM, C:\ 5, asked)")}) {
        for (const bool byEnter : {true, false}) {
            fs::remove_all(Folder().System("new"));
            Settings().TemporaryFolder(R"(C:\)");
            Settings().CompressLevel(8);
            Open("GENERAL");
            Slider().Value(5);
            Write("txtTemporaryFolder", Long(text));
            Said();
            Boxes().answers = {answer};
            Calls();
            if (byEnter) {
                QTest::keyClick(&Widget("txtTemporaryFolder"), Qt::Key_Return);
            } else {
                Page().CmdApply_Click();
            }
            const std::string told = Replace(
                Told(), "Temporary folder doesn't exist, create this new folder ?   ", ", asked");
            EXPECT_EQ(Short(Text("txtTemporaryFolder") + ", " + Settings().TemporaryFolder()) +
                          " " + std::to_string(Settings().CompressLevel()) + told + Calls(),
                      byEnter ? atEnter : applied);
            EXPECT_EQ(Folder().Has("new/deep"), text == made);
        }
    }
}

TEST_F(PreferencesPageTest, UndoesAndIsLeftWithWhatCannotBeApplied) {
    for (const bool undoes : {true, false}) {
        Open("COMPRESSION");
        Slider().Value(1);
        Click("ChkSecurity");
        WritePasswords("\u4E2D", "\u4E2D");
        Page().CmdApply_Click();
        EXPECT_EQ(Said().size(), 1U) << "this password cannot be stored";
        WritePasswords("new", "old");
        Write("txtTemporaryFolder", Folder().Drive());
        if (undoes) {
            Click("CmdUndo");
        } else {
            Boxes().answers = {BoxAnswer::Yes};
            Page().LeavePage();
            EXPECT_EQ(Told(), "Apply Settings ? Passwords do not match   ");
        }
        EXPECT_EQ(General() + ", " + Compression(),
                  undoes ? "SYSTEM black ticked, Level 8 (High) |"
                         : "HERE black pick apply, Level 1 (Low Compression) secured new|old");
        Page().LeavePage();
        EXPECT_EQ(Told(), "");
    }
}

}  // namespace
}  // namespace zarn::testing
