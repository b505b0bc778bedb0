#include <QTimer>
#include <filesystem>
#include <set>

#include "controls/PanelText.h"
#include "controls/chameleonButton.h"
#include "support/forms/PreferencesPageFixture.h"

namespace zarn::testing {
namespace {

constexpr ColourValue Warning = 192;
constexpr const char* Bad =
    "Invalid Characters in Temporary folder,\rPlease check, previous selection will be assumed";
constexpr const char* Ask = "Temporary folder doesn't exist, create this new folder ?   ";

using PreferencesPageTest = PreferencesPageFixture;

void ExpectToFit(const QWidget& control) {
    constexpr int BorderOfButton = 10;
    int needed = control.sizeHint().width();
    if (const auto* button = qobject_cast<const chameleonButton*>(&control)) {
        needed = control.fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() +
                 BorderOfButton;
    } else if (control.inherits("zarn::PanelText") ||
               !(control.inherits("QAbstractButton") || control.inherits("QTabBar") ||
                 control.inherits("QLabel"))) {
        return;
    }
    EXPECT_GE(control.width(), needed) << FromQt(control.objectName());
    EXPECT_GE(control.height(), control.fontMetrics().height()) << FromQt(control.objectName());
}

TEST_F(PreferencesPageTest, EveryTextFitsHasANameAndAKeyOfItsOwn) {
    for (const char* family : {"DejaVu Sans", "Noto Sans"}) {
        QFont font(family);
        font.setPixelSize(11);
        Page().setFont(font);
        for (const char* tab : {"GENERAL", "COMPRESSION"}) {
            Page().ShowSettingsTab(tab);
            for (int level = 0; level <= 9; ++level) {
                Slider().Value(level);
                Find<QLabel>("lblPasswordMatch")
                    .setText(" Password and confirmation do not match ");
                Widget("lblPasswordMatch").show();
                QTest::qWait(1);
                EXPECT_LE(Page().minimumSizeHint().width(), PageWidth) << family;
                EXPECT_LE(Page().minimumSizeHint().height(), PageHeight) << family;
                for (const QWidget* control : Page().findChildren<QWidget*>()) {
                    if (control->isVisible()) {
                        ExpectToFit(*control);
                    }
                }
            }
        }
    }
    std::set<QKeySequence> keys;
    for (QAbstractButton* button : Page().findChildren<QAbstractButton*>()) {
        const QKeySequence key = QKeySequence::mnemonic(button->text());
        EXPECT_TRUE(key.isEmpty() || keys.insert(key).second) << FromQt(button->text());
    }
    for (QWidget* control : Page().findChildren<QWidget*>()) {
        EXPECT_TRUE(control->objectName().isEmpty() || control->objectName().startsWith("qt_") ||
                    qobject_cast<QTabBar*>(control->parentWidget()) != nullptr ||
                    !control->accessibleName().isEmpty())
            << FromQt(control->objectName());
    }
}

TEST_F(PreferencesPageTest, TheTabKeyGoesThePagesWay) {
    const std::vector<const char*> general = {"txtTemporaryFolder", "CmdTemporaryFolder",
                                              "ChkWindowsTempFolder", "CmdApply", "CmdUndo"};
    const std::vector<const char*> compression = {"Slider1",      "ChkSecurity", "txtPassword",
                                                  "txtPassword2", "CmdApply",    "CmdUndo"};
    for (const auto& [tab, way] :
         {std::pair("GENERAL", general), std::pair("COMPRESSION", compression)}) {
        Open(tab);
        Write("txtTemporaryFolder", Folder().Drive());
        Button("ChkSecurity").setChecked(true);
        Widget("TabStrip1").setFocus();
        for (const char* name : way) {
            QTest::keyClick(Page().focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(FromQt(Page().focusWidget()->objectName()), name);
        }
    }
}

TEST_F(PreferencesPageTest, ShowsATabAndLosesALevelThatWasNotApplied) {
    Open("GENERAL");
    EXPECT_TRUE(Widget("Panel1Settings").isVisible());
    EXPECT_FALSE(Widget("Panel3Settings").isVisible());
    Find<QTabBar>("TabStrip1").setCurrentIndex(1);
    EXPECT_FALSE(Widget("Panel1Settings").isVisible());
    EXPECT_TRUE(Widget("Panel3Settings").isVisible());
    Page().CmdUndo_Click();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home}) {
        QTest::keyClick(&Slider(), key);
        EXPECT_EQ(Page().IsDirty() && CanApply(), key != Qt::Key_Right);
    }
    EXPECT_EQ(LabelText("CompressionLabel"), "Level 0 (No Compression)");
    Button("ChkSecurity").setChecked(true);
    Write("txtPassword", "new");
    Find<QTabBar>("TabStrip1").setCurrentIndex(0);
    EXPECT_EQ(Slider().Value(), 8);
    EXPECT_EQ(LabelText("CompressionLabel"), "Level 8 (High)");
    EXPECT_EQ(LabelText("CompressionLabelExtend"),
              "Better Compression but process time can be slow");
    EXPECT_FALSE(Button("ChkSecurity").isChecked());
    EXPECT_EQ(Text("txtPassword") + Text("txtPassword2"), "");
    Write("txtTemporaryFolder", Folder().Drive());
    Page().ShowSettingsTab("COMPRESSION");
    EXPECT_EQ(Find<QTabBar>("TabStrip1").currentIndex(), 1);
    EXPECT_EQ(Text("txtTemporaryFolder"), Folder().Drive());
    EXPECT_TRUE(CanApply());
}

TEST_F(PreferencesPageTest, SaysByColourWhatAFolderIs) {
    Folder().MakeFolder("other");
    const std::string here = Folder().Drive();
    struct Case {
        std::string text;
        ColourValue colour;
        const char* message;
        bool canApply;
        bool isLookedAt;
    };
    for (const Case& row : {Case{"", Red, "", false, false},
                            {"C", Red, "", false, false},
                            {"C:", Red, "", false, false},
                            {"tmp", Red, "", false, false},
                            {here + R"(\other)", Black, "", true, true},
                            {here + R"(\new)", Blue, "", true, false},
                            {R"(\\server\share)", Blue, "", true, false},
                            {here + R"(\ne?w)", Red, Bad, false, false},
                            {here + R"(\)", Black, "", true, true}}) {
        SCOPED_TRACE(row.text);
        Open("GENERAL");
        EXPECT_EQ(Text("txtTemporaryFolder"), SystemFolder());
        EXPECT_FALSE(CanApply());
        for (const char* name : {"txtFileSystem", "txtDriveCapacity", "txtFreeSpace"}) {
            EXPECT_FALSE(LabelText(name).empty());
            Find<PanelText>(name).setText("kept");
        }
        Write("txtTemporaryFolder", row.text);
        EXPECT_EQ(Colour("txtTemporaryFolder"), row.colour);
        EXPECT_EQ(Message(), row.message);
        EXPECT_EQ(CanApply(), row.canApply);
        EXPECT_EQ(Page().IsDirty(), row.canApply);
        for (const char* name : {"txtFileSystem", "txtDriveCapacity", "txtFreeSpace"}) {
            EXPECT_EQ(LabelText(name) != "kept", row.isLookedAt) << name;
        }
        EXPECT_EQ(Button("ChkWindowsTempFolder").isChecked(), !row.isLookedAt);
        EXPECT_EQ(Widget("CmdTemporaryFolder").isEnabled(), row.isLookedAt);
        EXPECT_EQ(Settings().TemporaryFolder(), SystemFolder());
    }
    // Whoever leaves the field has its shape looked at alone.
    for (const auto& [text, colour] :
         {std::pair(std::string("tmp"), Red), {here + R"(\new)", Black}}) {
        Field("txtTemporaryFolder").setFocus();
        Write("txtTemporaryFolder", text);
        Widget("ChkWindowsTempFolder").setFocus();
        EXPECT_EQ(Colour("txtTemporaryFolder"), colour);
    }
}

TEST_F(PreferencesPageTest, TakesTheSystemsFolderOrOneThatIsPicked) {
    Settings().TemporaryFolder(Folder().Drive() + "\\");
    Open("GENERAL");
    EXPECT_FALSE(Button("ChkWindowsTempFolder").isChecked());
    Click("ChkWindowsTempFolder");
    EXPECT_EQ(Text("txtTemporaryFolder"), SystemFolder());
    EXPECT_FALSE(Widget("CmdTemporaryFolder").isEnabled());
    EXPECT_TRUE(CanApply());
    Click("ChkWindowsTempFolder");
    EXPECT_TRUE(Widget("CmdTemporaryFolder").isEnabled());
    Click("CmdTemporaryFolder");
    EXPECT_EQ(Text("txtTemporaryFolder"), SystemFolder());
    EXPECT_EQ(Dialogs().asked.back(), "Select Temporary Folder|" + Folder().Drive() + "\\");
    Folder().MakeFolder("picked");
    for (const std::string& picked : {Folder().Drive("picked"), Folder().Drive() + "\\"}) {
        Dialogs().answers = {picked};
        Click("CmdTemporaryFolder");
        EXPECT_EQ(Text("txtTemporaryFolder"), picked.ends_with('\\') ? picked : picked + "\\");
    }
    EXPECT_FALSE(CanApply());
}

TEST_F(PreferencesPageTest, WarnsOnlyWhileThePasswordIsTheStoredOne) {
    std::vector<bool> security;
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("secret");
    Open("COMPRESSION");
    QObject::connect(&Page(), &PreferencesPage::SecurityChanged, &Page(),
                     [&security](bool on) { security.push_back(on); });
    struct Case {
        const char* field;
        const char* text;
        const char* caption;
        ColourValue confirmation;
        bool canApply;
    };
    for (const Case& row :
         {Case{"txtPassword2", "other", " Password and confirmation do not match ", Warning, false},
          {"txtPassword2", "secret", "", Black, false},
          {"txtPassword", "new", "", Black, true},
          {"txtPassword2", "old", "", Black, true},
          {"txtPassword", "secret", " Password and confirmation do not match ", Warning, false}}) {
        SCOPED_TRACE(row.text);
        Write(row.field, row.text);
        EXPECT_EQ(LabelText("lblPasswordMatch"), row.caption);
        EXPECT_EQ(Widget("lblPasswordMatch").isVisible(), *row.caption != '\0');
        EXPECT_EQ(Colour("lblPasswordMatch"), Warning);
        EXPECT_EQ(Colour("txtPassword2"), row.confirmation);
        EXPECT_EQ(CanApply(), row.canApply);
    }
    for (const bool ticked : {false, true}) {
        Click("ChkSecurity");
        for (const char* name : {"Label24", "Label25", "txtPassword", "txtPassword2"}) {
            EXPECT_EQ(Widget(name).isEnabled(), ticked) << name;
        }
        EXPECT_EQ(CanApply(), !ticked);
        EXPECT_EQ(LabelText("lblPasswordMatch").empty(), !ticked);
    }
    EXPECT_EQ(security, (std::vector<bool>{false, true}));
}

TEST_F(PreferencesPageTest, StoresEverythingAndThePasswordScrambled) {
    Open("COMPRESSION");
    Slider().Value(3);
    Click("ChkSecurity");
    Write("txtPassword", "Grüße 7");
    Write("txtPassword2", "Grüße 7");
    Write("txtTemporaryFolder", Folder().Drive());
    Click("CmdApply");
    EXPECT_EQ(Message(), "");
    EXPECT_FALSE(CanApply());
    EXPECT_EQ(Page().focusWidget(), &Widget("TabStrip1"));
    EXPECT_FALSE(Page().IsDirty());
    EXPECT_EQ(Frame().calls,
              (std::vector<std::string>{"unit " + Folder().Drive(), "return", "summary"}));
    EXPECT_NE(StoreFile().find("Compress Password\"="), std::string::npos);
    EXPECT_EQ(StoreFile().find("Grüße"), std::string::npos);
    Open("COMPRESSION");
    EXPECT_EQ(Slider().Value(), 3);
    EXPECT_TRUE(Button("ChkSecurity").isChecked());
    for (const char* name : {"txtPassword", "txtPassword2"}) {
        EXPECT_EQ(Text(name), "Grüße 7");
        EXPECT_EQ(Field(name).echoMode(), QLineEdit::Password);
    }
    EXPECT_EQ(Text("txtTemporaryFolder"), Folder().Drive());
    // Without security no password stays; without compression nothing is compressed.
    for (const std::int32_t level : {0, 1}) {
        Frame().calls.clear();
        Button("ChkSecurity").setChecked(false);
        Slider().Value(level);
        Click("CmdApply");
        EXPECT_EQ(Settings().CompressPasswordProtect(), 0);
        EXPECT_EQ(Text("txtPassword") + Text("txtPassword2") + Settings().CompressPassword(), "");
        EXPECT_EQ(Settings().CompressLevel(), level);
        const std::string unit = "unit " + Folder().Drive();
        EXPECT_EQ(Frame().calls,
                  level == 0 ? (std::vector<std::string>{"untick", unit, "return", "summary"})
                             : (std::vector<std::string>{unit, "return", "summary"}));
        EXPECT_FALSE(CanApply());
    }
}

TEST_F(PreferencesPageTest, SettlesTheFolderWhenAppliedAndAtTheEnterKey) {
    Folder().Write("plain", "");
    const std::string here = Folder().Drive();
    const std::string system = SystemFolder();
    const std::string made = here + R"(\new\deep)";
    struct Case {
        std::string text;
        std::optional<BoxAnswer> answer;
        std::string textAfter;
        std::string stored;  ///< by applying; "kept" where nothing is
        bool isTheEnd;       ///< nothing follows the answer
    };
    for (const Case& row : {Case{here, {}, here, here, false},
                            {here + "\\", {}, here + "\\", here + "\\", false},
                            {" ", {}, system, system, false},
                            {here + R"(\ne*w)", {}, system, system, false},
                            {"ab", BoxAnswer::No, system, system, false},
                            {here + R"(\no)", BoxAnswer::No, system, system, false},
                            {made, BoxAnswer::Yes, made, made, true},
                            {R"(Q:\x)", BoxAnswer::Yes, system, "kept", true},
                            {here + R"(\plain\x)", BoxAnswer::Yes, system, "kept", true}}) {
        for (const bool byEnter : {true, false}) {
            SCOPED_TRACE(row.text + (byEnter ? " at Enter" : " applied"));
            std::filesystem::remove_all(Folder().System("new"));
            Settings().TemporaryFolder(R"(C:\)");
            Settings().CompressLevel(8);
            Open("GENERAL");
            Slider().Value(5);
            Write("txtTemporaryFolder", row.text);
            Boxes().shown.clear();
            Boxes().answers = {row.answer.value_or(BoxAnswer::No)};
            Frame().calls.clear();
            if (byEnter) {
                QTest::keyClick(&Widget("txtTemporaryFolder"), Qt::Key_Return);
            } else {
                Page().CmdApply_Click();
            }
            const bool isRefused = byEnter && (row.text == " " || row.text == "ab");
            EXPECT_EQ(Message(), row.answer && !isRefused ? Ask : "");
            EXPECT_EQ(Text("txtTemporaryFolder"), isRefused ? row.text : row.textAfter);
            const bool isKept = row.stored == "kept" || (byEnter && !row.isTheEnd);
            EXPECT_EQ(Settings().TemporaryFolder(), isKept ? R"(C:\)" : row.stored);
            EXPECT_EQ(Settings().CompressLevel(), byEnter ? 8 : 5);
            std::vector<std::string> calls;
            if (row.text.starts_with(here) && row.textAfter == row.text && row.text != made) {
                calls.push_back("unit " + row.text);
            }
            if (!byEnter && !row.isTheEnd) {
                calls.insert(calls.end(), {"return", "summary"});
            }
            EXPECT_EQ(Frame().calls, calls);
            EXPECT_FALSE(LabelText("txtFreeSpace").empty());
            EXPECT_EQ(Folder().Has("new/deep"), row.text == made);
        }
    }
    EXPECT_FALSE(Folder().Has("no"));
}

TEST_F(PreferencesPageTest, TakesWhatHappensInTheMiddle) {
    // Another tab while the page is dirty, whose refresh lets events run.
    Write("txtTemporaryFolder", Folder().Drive());
    auto& tabs = Find<QTabBar>("TabStrip1");
    QTimer::singleShot(0, &Page(), [&tabs] { tabs.setCurrentIndex(0); });
    tabs.setCurrentIndex(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_TRUE(Widget("Panel1Settings").isVisible());
    EXPECT_FALSE(Widget("Panel3Settings").isVisible());
    // An undo while security is being given up.
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("secret");
    Open("COMPRESSION");
    Button("ChkSecurity").setChecked(false);
    QTimer::singleShot(0, &Page(), [this] { Page().CmdUndo_Click(); });
    Page().CmdApply_Click();
    EXPECT_EQ(Settings().CompressPasswordProtect(), 0);
    EXPECT_EQ(Settings().CompressPassword(), "");
}

TEST_F(PreferencesPageTest, UndoesAndAsksBeforeItIsLeft) {
    enum class Ending { Undo, No, Yes, YesWithOtherPasswords };
    for (const Ending ending :
         {Ending::Undo, Ending::No, Ending::YesWithOtherPasswords, Ending::Yes}) {
        SCOPED_TRACE(static_cast<int>(ending));
        Open("COMPRESSION");
        Page().LeavePage();
        EXPECT_EQ(Message(), "");
        Slider().Value(1);
        Click("ChkSecurity");
        Write("txtPassword", "new");
        Write("txtPassword2", ending == Ending::Yes ? "new" : "old");
        Write("txtTemporaryFolder", Folder().Drive());
        const bool no = ending == Ending::No;
        Boxes().answers = {no ? BoxAnswer::No : BoxAnswer::Yes};
        if (ending == Ending::Undo) {
            Click("CmdUndo");
        } else {
            Page().LeavePage();
            ASSERT_FALSE(Boxes().shown.empty());
            EXPECT_EQ(Boxes().shown[0].text, "Apply Settings ? ");
            Boxes().shown.erase(Boxes().shown.begin());
        }
        const bool isRefused = ending == Ending::YesWithOtherPasswords;
        EXPECT_EQ(Message(), isRefused ? "Passwords do not match   " : "");
        EXPECT_FALSE(Page().IsDirty());
        EXPECT_EQ(CanApply(), isRefused);
        EXPECT_EQ(Frame().calls.empty(), ending != Ending::Yes);
        EXPECT_EQ(Settings().CompressLevel(), ending == Ending::Yes ? 1 : 8);
        if (ending == Ending::Undo || no) {
            EXPECT_EQ(Text("txtTemporaryFolder"), SystemFolder());
            EXPECT_EQ(LabelText("CompressionLabel"), "Level 8 (High)");
            EXPECT_FALSE(Button("ChkSecurity").isChecked());
            EXPECT_FALSE(Widget("txtPassword").isEnabled());
            EXPECT_EQ(Text("txtPassword") + Text("txtPassword2"), "");
        }
        Boxes().answers.clear();
    }
}

TEST_F(PreferencesPageTest, SelectsATextThatIsNotBlankWhenItGetsTheKeyboard) {
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("secret");
    Open("COMPRESSION");
    Write("txtPassword2", "  ");
    for (const auto& [name, selected] :
         {std::pair("txtPassword", "secret"), {"txtPassword2", ""}}) {
        Field(name).deselect();
        Field(name).setFocus(Qt::MouseFocusReason);
        EXPECT_EQ(FromQt(Field(name).selectedText()).size(), std::string(selected).size()) << name;
    }
    Field("txtPassword").deselect();
    Field("txtPassword").setFocus(Qt::ActiveWindowFocusReason);
    EXPECT_FALSE(Field("txtPassword").hasSelectedText());
}

}  // namespace
}  // namespace zarn::testing
