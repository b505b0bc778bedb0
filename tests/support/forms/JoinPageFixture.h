#pragma once

#include "join/JoinPage.h"
#include "support/forms/PageFixture.h"

namespace zarn::testing {

/// The join page in its empty state. Notes what the page writes to the window's panel.
class JoinPageFixture : public PageFixture<JoinPage>, public DrivePanel {
  protected:
    void ShowDrive(std::string_view path) override { calls.push_back("show " + std::string(path)); }
    void BlackenFreeSpace() override { calls.emplace_back("black"); }

    std::unique_ptr<JoinPage> Make() override {
        return std::make_unique<JoinPage>(Shared(), Dialogs(), *this, nullptr);
    }
    void BringUp(JoinPage& page) override { page.JoinPageReset(); }

    bool UsesJoinFolder() { return IsChecked("ChkJoinDestination"); }

    void Browse(const std::string& path) {
        Dialogs().answers = {path};
        Click("CmdSourceFileJoin");
    }
    void Drop(const Names& paths) { DropOn("txtFileToJoin", paths); }

    /// The script of a set.
    static std::string Script(const std::string& count) {
        const std::string rule = "Rem " + std::string(73, '=') + "\r\n";
        return "@Echo off\r\n" + rule + "Rem |  Parts Count ..: " + count +
               "\r\nRem |  Original File : \"Movie.avi\"\r\n" + rule +
               "IF EXIST Zarn.TMP Del Zarn.TMP\r\nCopy \"Movie.avi_Part1\" Zarn.TMP\r\n"
               "Copy /b Zarn.TMP + \"Movie.avi_Part2\" Zarn.TMP\r\n"
               "IF EXIST \"Movie.avi\" Del \"Movie.avi\"\r\nRen Zarn.TMP \"Movie.avi\"\r\n";
    }
    /// A set of two parts in the test's folder, and the path of its script.
    std::string MakeSet() {
        Folder().Write("Movie.avi_Part1", std::string(2000, 'a'));
        Folder().Write("Movie.avi_Part2", "end");
        Folder().Write("Movie.avi_Part0.bat", Script("2"));
        return Folder().Drive("Movie.avi_Part0.bat");
    }

    Names calls;
};

}  // namespace zarn::testing
