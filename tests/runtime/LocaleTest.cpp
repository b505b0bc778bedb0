#include <cstdlib>
#include <iostream>

#include "runtime/Locale.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

/// Ends with status 0 if the locale that just these variables name has these separators.
[[noreturn]] void Compare(const std::string& variables, const std::string& expected) {
    for (const char* const name : {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"}) {
        unsetenv(name);
    }
    for (const std::string& variable : Split(variables, " ")) {
        const std::vector<std::string> words = Split(variable, "=");
        setenv(words[0].c_str(), words[1].c_str(), 1);
    }
    const auto [decimal, group, date, time] = ReadLocaleSeparators();
    const std::string found = decimal + "|" + group + "|" + date + "|" + time;
    std::cerr << "found " << found << ", expected " << expected;
    // Ended at once, since the system's library leaks a few bytes whenever LOCPATH is set.
    std::_Exit(found == expected ? 0 : 1);
}

/// Makes a locale for LOCPATH, which is the folder, from its numeric and time formats. Neither the
/// locales nor the character sets of the system are needed.
void MakeLocale(const TestFolder& folder, const std::string& name, const std::string& group,
                const std::string& date, const std::string& time) {
    folder.Write("charmap",
                 "<code_set_name> MIXED\n<escape_char> /\n<mb_cur_min> 1\n<mb_cur_max> 3\nCHARMAP\n"
                 "<U0020>..<U007E> /x20 ASCII\n<U009A> /x9a OTHER\n<U00A0> /xa0 NBSP\n"
                 "<U202F> /xe2/x80/xaf NNBSP\n<U5E74> /xe5/xb9/xb4 YEAR\nEND CHARMAP\n");
    folder.Write("source", "LC_NUMERIC\ndecimal_point \"" + std::string(group.empty() ? "." : ",") +
                               "\"\nthousands_sep \"" + group + "\"\ngrouping " +
                               (group.empty() ? "-1" : "3;3") + "\nEND LC_NUMERIC\nLC_TIME\n" +
                               "d_fmt \"" + date + "\"\nt_fmt \"" + time + "\"\nEND LC_TIME\n");
    const std::string command = "cd '" + folder.System() +
                                "' && localedef -c -i source -f ./charmap ./" + name +
                                " >/dev/null 2>&1";
    // The status tells of warnings too, so the result is looked at instead.
    // NOLINTNEXTLINE(cert-env33-c): a fixed command on names of this test's own
    static_cast<void>(std::system(command.c_str()));
    ASSERT_TRUE(folder.Has(name)) << command;
}

TEST(Locale, PlainAndUnknownOnesAreEnglishOthersGiveTheirSeparators) {
    const TestFolder folder;
    MakeLocale(folder, "dots", ".", "%a, %-d.%m.%Y", "%p %OH.%M.%S");
    MakeLocale(folder, "thin", "<U202F>", "%D", "%T");
    MakeLocale(folder, "byte", "<U00A0>", "%F", "%r");
    MakeLocale(folder, "odd", "<U009A>", "%A %d %b-%Y", "%X%");
    MakeLocale(folder, "none", "", "%Y<U5E74>%m", "%R");
    setenv("LOCPATH", folder.System().c_str(), 1);
    using Case = std::pair<const char*, const char*>;
    for (const auto& [variables, expected] :
         {Case("", ".|,|/|:"), Case("LC_ALL=C", ".|,|/|:"), Case("LANG=POSIX", ".|,|/|:"),
          Case("LANG=C.UTF-8", ".|,|/|:"), Case("LC_ALL=xx_YY.UTF-8", ".|,|/|:"),
          Case("LANG=dots", ",|.|.|."), Case("LANG=thin", ",|\u202F|/|:"),
          Case("LANG=byte", ",|\u00A0|-|:"), Case("LANG=odd", ",||/|:"),
          Case("LANG=none", ".|,|/|:"), Case("LANG=byte LC_TIME=dots", ",|\u00A0|.|."),
          Case("LANG=dots LC_NUMERIC=C", ".|,|.|."), Case("LC_ALL=C LC_TIME=dots", ".|,|/|:"),
          Case("LC_ALL=byte LC_TIME=dots LANG=C", ",|\u00A0|-|:")}) {
        EXPECT_EXIT(Compare(variables, expected), ::testing::ExitedWithCode(0), "") << variables;
    }
    unsetenv("LOCPATH");
}

}  // namespace
}  // namespace zarn::testing
