#include "shell/HelpTexts.h"

#include <array>

namespace zarn {

namespace {

constexpr std::array Entries{
    HelpText{"/F=", "Source file to Split (Required)",
             "Syntax :  /F=c:\\MyFolder\\MySplitFile.Ext"},
    HelpText{"/D=",
             "Destination Folder (Optional) if ommited will be assumed as destination path the "
             "same as Source File and finally if this path dosen't exist will be created",
             "Syntax :   /D=c:\\MyDestinationFolder"},
    HelpText{"/PS=",
             "Part Size (Required) : Here you can setup the part size in MB or GB of you splitted "
             "parts",
             "Syntax :   /PS=1.44MB"},
    HelpText{"/PN=",
             "Part Number (Required if Part Size is not present) : Here you can setup by part "
             "number you split output",
             "Syntax :   /PN:500"},
    HelpText{"/C", "Compression (Optional) Compress original file before split process.", ""},
    HelpText{"/CL=", "Compression Level (Requierd if Compression is present)",
             "Syntax :   /CL=5  (Valid values 0:No Compression to 9:Strong)"},
    HelpText{"/DS", "Delete Source file after Split process (Optional)", ""},
    HelpText{"/DP",
             "\"Delete Parts after join\" Clause will be included in the joint program. (Optional)",
             ""},
    HelpText{"/SFV", "Creates SFV Standard file", ""},
    HelpText{"/TEST",
             "Lets you check syntax and values prior to run your Command Line batch process, this "
             "mode does not process any file, only for test pourpouses.",
             ""},
    HelpText{"/?  or  /H", "Display this PopUp.", ""},
};

}  // namespace

std::span<const HelpText> HelpTexts() {
    return Entries;
}

std::string HelpPopupText() {
    std::string popup = std::string(HelpCaption) + '\n';
    for (const HelpText& entry : Entries) {
        popup.append("\n").append(entry.label).append("\n    ").append(entry.text).append("\n");
        if (!entry.syntax.empty()) {
            popup.append("    ").append(entry.syntax).append("\n");
        }
    }
    return popup;
}

}  // namespace zarn
