
#include "support/forms/FormChecks.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

constexpr double MB = 1048576;

class SplitPageSize : public SplitPageFixture {
  protected:
    std::string Unit() {
        return std::string(IsChecked("OptMB") ? "MB" : "") + (IsChecked("OptGB") ? "GB" : "");
    }
    std::string StoredUnit() {
        return std::to_string(Settings().SizeMB()) + std::to_string(Settings().SizeGB());
    }
};

TEST_F(SplitPageSize, EveryControlHasANameAKeyAndAPlaceOfItsOwn) {
    OpenSource(10 * MB);
    Button("ChkDestinationFolder").setChecked(false);
    Page().RefreshStartButtons();
    ExpectNamesAndKeys(Page());
    Field("txtSourceFile").setFocus();
    ExpectTabOrder(
        Page(), {"CmdSourceFile", "OptSize", "CmbPartSize", "OptMB", "ChkSFV", "ChkCompress",
                 "ChkDeleteSource", "ChkDeleteJoin", "txtDestinationFolder", "CmdDestinationFolder",
                 "ChkDestinationFolder"});
}

TEST_F(SplitPageSize, AUnitIsStoredSuppliesACountAndMarksAMissingSource) {
    const std::string source = OpenSource(10 * MB);
    EXPECT_EQ(Text("txtPartsNumber"), "");
    Click("OptGB");
    EXPECT_EQ(StoredUnit(), "01");
    EXPECT_EQ(Text("txtPartsNumber"), "2");
    EXPECT_EQ(Spinner().Value(), 2);
    EXPECT_EQ(Colour("txtSourceFile"), Black);
    Write("txtPartsNumber", "7");
    Page().RefreshStartButtons();
    Click("OptMB");
    EXPECT_EQ(StoredUnit(), "10");
    EXPECT_EQ(Text("txtPartsNumber"), "7");
    Click("OptGB");
    Write("txtPartsNumber", "none");
    Click("OptMB");
    EXPECT_EQ(Text("txtPartsNumber"), "2");

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
    for (const auto& [unit, typed, text, unitAfter] :
         {std::tuple("OptGB", "250 mb", "250 MB", "MB"),
          std::tuple("OptMB", "5 gB x", "5 GB x", "GB"),
          std::tuple("OptGB", "3 m b", "3 m b", "GB"),
          std::tuple("OptMB", "3 GB mB", "3 GB MB", "GB")}) {
        Button(unit).setChecked(true);
        SetTextColour(PartSize(), Red);
        Type(PartSize(), typed);
        EXPECT_EQ(PartSize().Text(), text) << typed;
        EXPECT_EQ(Unit(), unitAfter) << typed;
        EXPECT_EQ(Colour("CmbPartSize"), WindowText) << typed;
    }
    PartSize().WriteText("5m free");
    PartSize().lineEdit()->setCursorPosition(2);
    QTest::keyClicks(&PartSize(), "b");
    EXPECT_EQ(PartSize().Text(), "5MB free");
    EXPECT_EQ(PartSize().lineEdit()->cursorPosition(), 3);
}

TEST_F(SplitPageSize, TypedCounts) {
    OpenSource(10 * MB);
    Click("OptParts");
    for (const auto& [typed, text, spinner] :
         {std::tuple("2.5", "25", 25), std::tuple("12 parts", "12 parts", 12),
          std::tuple("abc", "abc", 12), std::tuple("1000000", "1000000", 999999),
          std::tuple("", "", 999999)}) {
        SetTextColour(Field("txtPartsNumber"), Red);
        Type("txtPartsNumber", typed);
        EXPECT_EQ(Text("txtPartsNumber"), text) << typed;
        EXPECT_EQ(Spinner().Value(), spinner) << typed;
        EXPECT_EQ(Colour("txtPartsNumber"), Black) << typed;
    }
    Write("txtPartsNumber", "123");
    Field("txtPartsNumber").setCursorPosition(1);
    QTest::keyClicks(&Field("txtPartsNumber"), "4.5");
    EXPECT_EQ(Text("txtPartsNumber"), "14523");
    for (const auto& [y, count] :
         {std::pair(3, "14524"), std::pair(Spinner().height() - 4, "14523")}) {
        QTest::mouseClick(&Spinner(), Qt::LeftButton, {}, {Spinner().width() / 2, y});
        EXPECT_EQ(Text("txtPartsNumber"), count);
    }
}

TEST_F(SplitPageSize, AFilledFieldIsSelectedWhenTheKeyboardComesToIt) {
    OpenSource(10 * MB);
    for (const auto& [mode, edit, text] : {std::tuple("OptSize", PartSize().lineEdit(), "5 MB"),
                                           std::tuple("OptParts", &Field("txtPartsNumber"), "3"),
                                           std::tuple("OptParts", &Field("txtPartsNumber"), " ")}) {
        Button(mode).setChecked(true);
        edit->setText(text);
        Field("txtSourceFile").setFocus();
        edit->setFocus(Qt::OtherFocusReason);
        EXPECT_EQ(edit->selectedText(), *text == ' ' ? "" : text);
    }
}

}  // namespace
}  // namespace zarn::testing
