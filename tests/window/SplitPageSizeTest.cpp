#include <QTimer>
#include <set>
#include <tuple>

#include "controls/PanelText.h"
#include "controls/chameleonButton.h"
#include "support/ErrorOf.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

constexpr double MB = 1048576;

class SplitPageSize : public SplitPageFixture {
  protected:
    /// Which controls of the mode are shown, and which of them are enabled.
    std::string SizeControls() {
        std::string state;
        for (const char* name :
             {"PicSize", "OptMB", "OptGB", "CmbPartSize", "txtPartsNumber", "VScPartsNumber"}) {
            const QWidget& control = Widget(name);
            const char* enabled = control.isEnabled() ? "+" : "-";
            state += control.isVisibleTo(&Page()) ? std::string(name) + enabled + " " : "";
        }
        return state;
    }

    std::string Unit() {
        return std::string(Button("OptMB").isChecked() ? "MB" : "") +
               (Button("OptGB").isChecked() ? "GB" : "");
    }

    std::string StoredUnit() {
        return std::to_string(Settings().SizeMB()) + std::to_string(Settings().SizeGB());
    }
};

void ExpectTextFits(const QWidget& control, const char* family) {
    constexpr int BorderOfButton = 10;
    int needed = 0;
    if (const auto* button = qobject_cast<const chameleonButton*>(&control)) {
        needed = button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() +
                 BorderOfButton;
    } else if (qobject_cast<const QAbstractButton*>(&control) != nullptr ||
               (qobject_cast<const QLabel*>(&control) != nullptr &&
                qobject_cast<const PanelText*>(&control) == nullptr)) {
        needed = control.sizeHint().width();
    } else {
        return;
    }
    EXPECT_GE(control.width(), needed) << family << ' ' << FromQt(control.objectName());
    EXPECT_GE(control.height(), control.fontMetrics().height())
        << family << ' ' << FromQt(control.objectName());
}

TEST_F(SplitPageSize, EveryTextFitsHasANameAndAKeyOfItsOwn) {
    for (const char* family : {"DejaVu Sans", "Noto Sans"}) {
        QFont font(family);
        font.setPixelSize(11);
        Page().setFont(font);
        ASSERT_EQ(QFontInfo(font).family(), family);
        for (const char* mode : {"OptParts", "OptSize"}) {
            Button(mode).setChecked(true);
            QTest::qWait(1);
            EXPECT_LE(Page().minimumSizeHint().width(), PageWidth) << family;
            EXPECT_LE(Page().minimumSizeHint().height(), PageHeight) << family;
            for (QWidget* control : Page().findChildren<QWidget*>()) {
                if (control->isVisible()) {
                    ExpectTextFits(*control, family);
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
        const QString name = control->objectName();
        EXPECT_TRUE(name.isEmpty() || name.startsWith("qt_") ||
                    !control->accessibleName().isEmpty())
            << FromQt(name);
    }
}

TEST_F(SplitPageSize, TheTabKeyGoesThePagesWay) {
    OpenSource(10 * MB);
    Settings().DestinationFolderUseSource(0);
    Button("ChkDestinationFolder").setChecked(false);
    Page().RefreshStartButtons();
    Field("txtSourceFile").setFocus();
    for (const char* name :
         {"txtSourceFile", "CmdSourceFile", "OptSize", "CmbPartSize", "OptMB", "ChkSFV",
          "ChkCompress", "ChkDeleteSource", "ChkDeleteJoin", "txtDestinationFolder",
          "CmdDestinationFolder", "ChkDestinationFolder"}) {
        EXPECT_EQ(FromQt(Page().focusWidget()->objectName()), name);
        QTest::keyClick(Page().focusWidget(), Qt::Key_Tab);
    }
}

TEST_F(SplitPageSize, AModeShowsAndEnablesItsFieldsAndIsStored) {
    const std::string bySize = "PicSize+ OptMB+ OptGB+ CmbPartSize+ ";
    const std::string byParts = "txtPartsNumber+ VScPartsNumber+ ";
    EXPECT_EQ(SizeControls(), "PicSize+ OptMB- OptGB- CmbPartSize- ");
    OpenSource(10 * MB);
    EXPECT_EQ(SizeControls(), bySize);
    Click("OptParts");
    EXPECT_EQ(SizeControls(), byParts);
    EXPECT_EQ(Settings().SplitCriteria(), "Parts");
    Open();
    EXPECT_EQ(SizeControls(), "txtPartsNumber- VScPartsNumber- ");
    EXPECT_TRUE(Button("OptParts").isChecked());
    OpenSource(10 * MB);
    EXPECT_EQ(SizeControls(), byParts);
    Click("OptSize");
    EXPECT_EQ(SizeControls(), bySize);
    EXPECT_EQ(Settings().SplitCriteria(), "Size");
}

TEST_F(SplitPageSize, AUnitIsStoredSuppliesACountAndMarksAMissingSource) {
    const std::string source = OpenSource(10 * MB);
    EXPECT_EQ(Text("txtPartsNumber"), "");
    Click("OptGB");
    EXPECT_EQ(StoredUnit(), "01");
    EXPECT_EQ(Text("txtPartsNumber"), "2");
    EXPECT_EQ(Spinner().Value(), 2);
    EXPECT_EQ(Colour("txtSourceFile"), Black);
    Field("txtPartsNumber").setText("7");
    Page().RefreshStartButtons();
    Boxes().shown.clear();
    Click("OptMB");
    EXPECT_EQ(StoredUnit(), "10");
    EXPECT_EQ(Text("txtPartsNumber"), "7");

    Page().RefreshStartButtons();
    EXPECT_TRUE(CanStart());
    Shared().Files().FileDelete(source);
    Click("OptGB");
    EXPECT_EQ(Colour("txtSourceFile"), Red);
    EXPECT_FALSE(CanStart());
    Open();
    EXPECT_EQ(Unit(), "GB");
}

TEST_F(SplitPageSize, TypedSizes) {
    OpenSource(10 * MB);
    const std::vector<std::tuple<const char*, const char*, const char*, const char*>> cases = {
        {"OptGB", "250 mb", "250 MB", "MB"},   {"OptMB", "2 Gb", "2 GB", "GB"},
        {"OptMB", "1.5", "1.5", "MB"},         {"OptGB", "1.5", "1.5", "GB"},
        {"OptMB", "5 gB x", "5 GB x", "GB"},   {"OptGB", "3 MB GB", "3 MB GB", "GB"},
        {"OptMB", "3 GB mB", "3 GB MB", "GB"}, {"OptGB", "3 m b", "3 m b", "GB"},
    };
    for (const auto& [unit, typed, text, unitAfter] : cases) {
        Button(unit).setChecked(true);
        SetTextColour(PartSize(), Red);
        Type(PartSize(), typed);
        EXPECT_EQ(PartSize().Text(), text) << typed;
        EXPECT_EQ(Unit(), unitAfter) << typed;
        EXPECT_EQ(Colour("CmbPartSize"), WindowText) << typed;
    }
    EXPECT_EQ(StoredUnit(), "01");
    PartSize().WriteText("5m free");
    PartSize().lineEdit()->setCursorPosition(2);
    QTest::keyClicks(&PartSize(), "b");
    EXPECT_EQ(PartSize().Text(), "5MB free");
    EXPECT_EQ(PartSize().lineEdit()->cursorPosition(), 3);
}

TEST_F(SplitPageSize, PickedRows) {
    Settings().ComboSize("650 mb|681574400;3 GB|1");
    Open();
    OpenSource(10 * MB);
    ASSERT_EQ(PartSize().RowCount(), 10);
    EXPECT_EQ(PartSize().Text(), "");
    const std::vector<std::tuple<const char*, const char*, int, int>> cases = {
        {"4.7 GB - DVD-R", "GB", 8, 8}, {"", "GB", 0, -1},       {"1.44 MB - Diskette", "MB", 3, 3},
        {"3 GB", "GB", 2, 2},           {"650 MB", "MB", 1, -1}, {"", "MB", 0, -1},
    };
    for (const auto& [text, unit, row, listIndex] : cases) {
        PartSize().SelectRow(row);
        EXPECT_EQ(PartSize().Text(), text) << row;
        EXPECT_EQ(PartSize().ListIndex(), listIndex) << row;
        EXPECT_EQ(Unit(), unit) << row;
    }
}

TEST_F(SplitPageSize, TypedCounts) {
    OpenSource(10 * MB);
    Click("OptParts");
    const std::vector<std::tuple<const char*, const char*, int>> cases = {
        {"5", "5", 5},  {"2.5", "25", 25}, {"12 parts", "12 parts", 12},   {"abc", "abc", 12},
        {"0", "0", 12}, {"0.5", "05", 5},  {"1000000", "1000000", 999999}, {"", "", 999999},
    };
    for (const auto& [typed, text, spinner] : cases) {
        SetTextColour(Field("txtPartsNumber"), Red);
        Type("txtPartsNumber", typed);
        EXPECT_EQ(Text("txtPartsNumber"), text) << typed;
        EXPECT_EQ(Spinner().Value(), spinner) << typed;
        EXPECT_EQ(Colour("txtPartsNumber"), Black) << typed;
    }
    Field("txtPartsNumber").setText("123");
    Field("txtPartsNumber").setCursorPosition(1);
    QTest::keyClicks(&Field("txtPartsNumber"), "4.5");
    EXPECT_EQ(Text("txtPartsNumber"), "14523");

    for (const auto& [y, count] : {std::pair{3, 14524}, {Spinner().height() - 4, 14523}}) {
        QTest::mouseClick(&Spinner(), Qt::LeftButton, {}, {Spinner().width() / 2, y});
        EXPECT_EQ(Text("txtPartsNumber"), std::to_string(count));
    }
}

TEST_F(SplitPageSize, AFilledFieldIsSelectedWhenTheKeyboardComesToIt) {
    OpenSource(10 * MB);
    PartSize().WriteText("5 MB");
    for (const char* text : {"3", "  "}) {
        Field("txtPartsNumber").setText(text);
        for (QWidget* field : {&Widget("CmbPartSize"), &Widget("txtPartsNumber")}) {
            const bool isCount = field == &Widget("txtPartsNumber");
            Button(isCount ? "OptParts" : "OptSize").setChecked(true);
            QLineEdit& edit = isCount ? Field("txtPartsNumber") : *PartSize().lineEdit();
            edit.deselect();
            Field("txtSourceFile").setFocus();
            field->setFocus(Qt::OtherFocusReason);
            const QString all = edit.text().trimmed().isEmpty() ? "" : edit.text();
            EXPECT_EQ(edit.selectedText(), all);
        }
    }
}

TEST_F(SplitPageSize, StartButtonsFollowTheSize) {
    const std::vector<std::tuple<const char*, const char*, const char*, double, bool>> cases = {
        {"OptSize", "OptMB", "", 10 * MB, true},
        {"OptSize", "OptMB", "9.99", 10 * MB, true},
        {"OptSize", "OptMB", "10", 10 * MB, false},
        {"OptSize", "OptMB", "10.004", 10 * MB, false},
        {"OptSize", "OptMB", "9.996", 10 * MB, false},
        {"OptSize", "OptMB", "9.996", 10 * MB + 20000, true},
        {"OptSize", "OptMB", "10,5", 10.2 * MB, true},
        {"OptSize", "OptMB", "700 MB - CD-R", 10 * MB, false},
        {"OptSize", "OptGB", "0.01", 52 * MB, true},
        {"OptSize", "OptGB", "0.05", 52 * MB, false},
        {"OptParts", "OptMB", "11", 10 * MB, false},
        {"OptParts", "OptMB", "1", 10 * MB, true},
        {"OptParts", "OptGB", "0.05", 52 * MB, false},
    };
    for (const auto& [mode, unit, size, bytes, ready] : cases) {
        OpenSource(bytes);
        Button(unit).setChecked(true);
        PartSize().WriteText(size);
        Button(mode).setChecked(true);
        Page().RefreshStartButtons();
        EXPECT_EQ(CanStart(), ready) << mode << ' ' << unit << ' ' << size;
        Button("OptSize").setChecked(true);
        Button("OptMB").setChecked(true);
    }
    EXPECT_TRUE(Boxes().shown.empty());
}

TEST_F(SplitPageSize, ASourceTooSmallForGigabytesFallsBackToMegabytes) {
    OpenSource(1 * MB);
    Button("OptGB").setChecked(true);
    ASSERT_EQ(Text("txtPartsNumber"), "2");
    PartSize().WriteText("0.4");
    Page().RefreshStartButtons();
    EXPECT_EQ(Boxes().shown.size(), 1U);
    EXPECT_EQ(Unit(), "MB");
    EXPECT_TRUE(CanStart());
}

TEST_F(SplitPageSize, StartButtonsFollowThePaths) {
    OpenSource(10 * MB);
    Folder().MakeFolder("out");
    const std::string source = Text("txtSourceFile");
    const std::vector<std::tuple<std::string, std::string, bool, ColourValue>> cases = {
        {source, Folder().Drive("out"), true, Black},
        {source, Folder().Drive("out") + "\\", true, Black},
        {" ", Folder().Drive("out"), false, Black},
        {source, "  ", false, Black},
        {Folder().Drive(), "C:\\none", false, Black},
        {source, Folder().Drive("none"), false, Red},
        {source, Folder().Drive("o?t"), false, Red},
        {Folder().Drive("none.bin"), Folder().Drive("out"), false, Black},
    };
    for (const auto& [from, to, ready, destinationColour] : cases) {
        const QSignalBlocker sourceBlocker(Field("txtSourceFile"));
        const QSignalBlocker destinationBlocker(Field("txtDestinationFolder"));
        Field("txtSourceFile").setText(ToQt(from));
        Field("txtDestinationFolder").setText(ToQt(to));
        SetTextColour(Widget("txtSourceFile"), Blue);
        SetTextColour(Widget("txtDestinationFolder"), Blue);
        Page().RefreshStartButtons();
        EXPECT_EQ(CanStart(), ready) << from << ' ' << to;
        EXPECT_EQ(Colour("txtDestinationFolder"), destinationColour) << from << ' ' << to;
        EXPECT_EQ(Colour("txtSourceFile"), Black);
    }
}

// A preset's own bytes hold only while its row is selected.
TEST_F(SplitPageSize, AJobRemembersItsSizeAndLeavesThePlainNumber) {
    Settings().ComboSize("1 MB|1048576;2 MB|2097152;3 MB|3145728");
    Open();
    OpenSource(4 * MB);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [] {
        QWidget* window = QApplication::activeModalWidget();
        auto* button =
            window == nullptr ? nullptr : window->findChild<QAbstractButton*>("CmdCancel");
        if (button != nullptr && button->text().startsWith("&Done (")) {
            button->click();
        }
    });
    poll.start(0);
    constexpr int DisketteRow = 4;
    PartSize().SelectRow(DisketteRow);
    const std::vector<std::tuple<const char*, const char*, std::size_t, const char*, const char*>>
        jobs = {
            {"OptSize", nullptr, 1454236, "1.44 MB", "1 MB|1048576;2 MB|2097152"},
            {"OptSize", nullptr, 1509949, "1.44 MB", "1 MB|1048576;2 MB|2097152"},
            {"OptSize", "0.5mb", 524288, "0.5 MB", "0.5 MB|524288;1 MB|1048576;2 MB|2097152"},
            {"OptSize", "2", 2097152, "2 MB", "2 MB|2097152;0.5 MB|524288;1 MB|1048576"},
            {"OptParts", "0.25", 1048576, "0.25", "2 MB|2097152;0.5 MB|524288;1 MB|1048576"},
        };
    Field("txtPartsNumber").setText("4");
    for (const auto& [mode, typed, bytes, text, stored] : jobs) {
        if (typed != nullptr) {
            PartSize().WriteText(typed);
        }
        Button(mode).setChecked(true);
        Page().RefreshStartButtons();
        Click("CmdStartSplitt");
        EXPECT_EQ(Folder().Read("film.mkv_Part1").size(), bytes) << text;
        EXPECT_EQ(PartSize().Text(), text);
        EXPECT_EQ(PartSize().ListIndex(), -1) << text;
        EXPECT_EQ(Settings().ComboSize(), stored) << text;
    }
}

TEST_F(SplitPageSize, AStoredSizeOfTwoGigabytesEndsTheReset) {
    Settings().ComboSize("2 GB|2147483648");
    EXPECT_EQ(ErrorOf([this] { Open(); }), ErrorNumber::Overflow);
    EXPECT_EQ(Settings().ComboSize(), "2 GB|2147483648");
}

}  // namespace
}  // namespace zarn::testing
