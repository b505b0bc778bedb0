#include "terminal/HelpPages.h"

namespace zarn {

namespace {

constexpr std::string_view Overview =
    R"(zarn - cut files into numbered parts and join them again

Usage:
  zarn split FILE... -s SIZE | -n COUNT [OPTION...]
  zarn join  SCRIPT|PART... [OPTION...]
  zarn check SCRIPT|PART|SFV... [OPTION...]
  zarn COMMAND --help
  zarn --help | --version

split  cuts each FILE into FILE_Part1, FILE_Part2 ..., and leaves the join script
       FILE_Part0.bat beside them
join   puts a set of parts together again
check  tells which parts of a set are there, and whether their checksums hold

Names that were made, and findings, go to standard output, all else to standard
error. A name that begins with "-" comes after "--". Nothing is read from the
settings of the window, and nothing is stored.

Exit status: 0 all done, 1 something failed, 2 wrong usage; after a signal, 128
and its number.
)";

constexpr std::string_view SplitPage =
    R"(zarn split - cut files into numbered parts

Usage: zarn split FILE... -s SIZE | -n COUNT [OPTION...]

Each FILE is a job of its own. It becomes FILE_Part1, FILE_Part2 ... with a join
script, FILE_Part0.bat, which joins them without this program, too.

  -s, --size SIZE           bytes of a part, with a unit if you like: 90000, 700M,
                            700MB, 1.44MB, 4G, 4GiB. A unit is 1024 of the one
                            below it: 1K is 1024 bytes, 1M is 1048576. 1.44MB is
                            what fits on a diskette, 1457275 bytes.
  -n, --count COUNT         number of parts, 1 to 9999, all of one size
  -o, --output FOLDER       where the parts go; else beside the FILE
  -z[LEVEL], --compress[=LEVEL]
                            cut FILE.zip instead; LEVEL is 0 (only store) to 9,
                            else 6
      --ask-password        encrypt the ZIP (AES-256); asks twice in the terminal
      --password-file FILE  likewise, with the first line of a file
      --sfv                 write the checksums of the parts (FILE_Part0.sfv)
      --delete-source       delete the FILE once its parts were read back and
                            found equal to it
      --delete-parts        let the join script delete the parts after a join
  -f, --force               replace a set of the same name
  -q, --quiet               no progress line, no summary
  -h, --help                this help

Nothing is written if the parts would have no room, or more than 9999 parts or too
long a name would come of it. What a failed job has made is deleted.
)";

constexpr std::string_view JoinPage =
    R"(zarn join - put a set of parts together again

Usage: zarn join SCRIPT|PART... [OPTION...]

A set is named by its join script, by any of its parts, or by its checksum file.
Without a script the parts are all that are there, from the first on without a gap.
Sets that other programs have left (NAME.001, NAME.002 ...) are joined likewise, and
held against NAME.crc if it is there.

  -o, --output FOLDER       where the joined file goes; else beside its parts
      --verify              hold the parts against their checksum file first
      --delete-parts        delete the set once the joined file has the size of all
                            parts, and their checksums hold if there are any
  -f, --force               replace a file of the same name
  -q, --quiet               no progress line, no summary
  -h, --help                this help
)";

constexpr std::string_view CheckPage =
    R"(zarn check - tell whether a set of parts is complete and unchanged

Usage: zarn check SCRIPT|PART|SFV... [OPTION...]

A set is named as for "zarn join". Told are parts that are missing, surplus, empty or
of odd length, and those whose checksum differs from the one in the checksum file
(FILE_Part0.sfv, or NAME.crc of NAME.001, NAME.002 ...). Any SFV file is checked, also
one of other programs. Each line on standard output is one file and what was found.

  -q, --quiet               only what is wrong; no progress line, no summary
  -h, --help                this help
)";

}  // namespace

std::string_view HelpPage(std::string_view command) {
    if (command == "split") {
        return SplitPage;
    }
    if (command == "join") {
        return JoinPage;
    }
    return command == "check" ? CheckPage : command.empty() ? Overview : std::string_view();
}

}  // namespace zarn
