#include "window/HoverTexts.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace zarn {

namespace {

struct Row {
    std::string_view control;
    std::string_view text;
};

// In the order of the names' characters.
constexpr auto Rows = std::to_array<Row>({
    {"ChkCompress",
     "Checking this box your split file will be compressed in WinZip compatible format."},
    {"ChkDeleteJoin", "Checking this box the 'part' files will be erased after re-join process."},
    {"ChkDeleteSource", "Checking this box your source file will be erased after split process."},
    {"ChkDestinationFolder",
     "Selecting this check the source file's location will be used as target directory for the "
     "'part' files."},
    {"ChkJoinDestination",
     "Checking this box the 'parts' files location will be used as target directory for the merged "
     "file."},
    {"ChkSFV", "Checking this box your splitted file will have an additional Standard SFV file"},
    {"ChkSecurity", "Checking this box will assign your configured password to the output file."},
    {"CmdApply", "By presing this button all new settings will be saved."},
    {"CmdDestinationFolder",
     "Press to browse your LAN or Local folders to select destination folder."},
    {"CmdDestinationFolderJoin",
     "Press to browse your LAN or Local folders to select destination folder."},
    {"CmdJoin", "Run your Join process."},
    {"CmdReset", "By presing this button this form will be cleaned."},
    {"CmdResetJoin", "By presing this button this form will be cleaned."},
    {"CmdSourceFile", "Press to browse your LAN or Local folders to select file to split."},
    {"CmdStartSplitt", "Run your split job."},
    {"CmdTemporaryFolder", "Press to browse your LAN or Local folders to select temporary folder."},
    {"CmdUndo", "Undo not saved changes."},
    {"Frame1", ""},
    {"Frame2", ""},
    {"Frame3", ""},
    {"Frame4", "File Option Panel"},
    {"Frame5", ""},
    {"Frame6", ""},
    {"Frame9", ""},
    {"FrmMain", ""},
    {"Label17", "File Report panel."},
    {"Label4", "File Integrity Report."},
    {"OptGB", "Select this option to meassure piece size in GB, recomended for large files."},
    {"OptMB", "Select this option to meassure piece size in MB, recomended for medium files size."},
    {"OptParts", "Select this option to process split job in 'Number of pieces' mode."},
    {"OptSize", "Select this option to process split job in 'Parts Size' mode."},
    {"Panel1", ""},
    {"Panel2", ""},
    {"Panel4", ""},
    {"Picture2", "Split Method panel."},
    {"Picture3", "Destination folder panel."},
    {"Slider1",
     "Select your Compression level between 0 (No Compress) and 9 (Strong Compression)."},
    {"TabStrip1", ""},
    {"VScPartsNumber",
     "You can select number of parts for you splitted file, scrolling this up or down."},
    {"cmdCreateCommand",
     "By pressing this button you can view or save the 'ready-to-run' Split Script."},
    {"txtDestinationFolder",
     "Select Local/LAN Destination folder or create new one by typing it and press enter."},
    {"txtDestinationFolderJoin",
     "Select any destination Local or LAN folder or create a new one by typing it and press "
     "enter."},
    {"txtFileToJoin",
     "Select any Zarn Join file by drag and drop from Ms Windows Explorer or pressing browse "
     "button."},
    {"txtJoinSize", "Size of the joined file on disk."},
    {"txtPartsNumber", "You can select number of parts for you splitted file."},
    {"txtPassword", "Type your preferred password."},
    {"txtPassword2", "Re-type your preferred password."},
    {"txtSourceFile", "Select any file to split or drag and drop into this box."},
    {"txtTemporaryFolder",
     "Select Local or LAN folder or create new one by typing it, to use as temporary folder."},
});

static_assert(std::ranges::is_sorted(Rows, {}, &Row::control));

}  // namespace

std::optional<std::string_view> HoverText(std::string_view controlName) {
    const auto* row = std::ranges::lower_bound(Rows, controlName, {}, &Row::control);
    if (row == std::end(Rows) || row->control != controlName) {
        return std::nullopt;
    }
    return row->text;
}

}  // namespace zarn
