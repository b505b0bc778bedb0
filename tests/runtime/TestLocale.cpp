#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Locale.h"
#include "support/TestFolder.h"

namespace zarn {

namespace {

using Environment = std::map<std::string, std::string>;

/// Expects the separators of the locale that just this environment names.
void ExpectSeparators(const Environment& environment, const std::string& expected) {
    const auto compare = [&] {
        for (const char* const name : {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"}) {
            unsetenv(name);
        }
        for (const auto& [name, value] : environment) {
            setenv(name.c_str(), value.c_str(), 1);
        }
        const auto [decimal, group, date, time] = ReadLocaleSeparators();
        const std::string found = decimal + "|" + group + "|" + date + "|" + time;
        std::cerr << "found " << found << ", expected " << expected;
        // Ended at once, since the system's library leaks a few bytes whenever LOCPATH is set.
        std::_Exit(found == expected ? 0 : 1);
    };
    EXPECT_EXIT(compare(), ::testing::ExitedWithCode(0), "");
}

/// Makes a locale for LOCPATH, which is the folder, from its numeric and time formats. Neither the
/// locales nor the character sets of the system are needed.
void MakeLocale(const testing::TestFolder& folder, const std::string& name,
                const std::string& decimal, const std::string& group, const std::string& date,
                const std::string& time) {
    folder.Write("charmap",
                 "<code_set_name> MIXED\n<escape_char> /\n<mb_cur_min> 1\n<mb_cur_max> 3\nCHARMAP\n"
                 "<U0020>..<U007E> /x20 ASCII\n<U009A> /x9a OTHER\n<U00A0> /xa0 NBSP\n"
                 "<U202F> /xe2/x80/xaf NNBSP\n<U5E74> /xe5/xb9/xb4 YEAR\nEND CHARMAP\n");
    folder.Write("source", "LC_NUMERIC\ndecimal_point \"" + decimal + "\"\nthousands_sep \"" +
                               group + "\"\ngrouping " + (group.empty() ? "-1" : "3;3") +
                               "\nEND LC_NUMERIC\nLC_TIME\nd_fmt \"" + date + "\"\nt_fmt \"" +
                               time + "\"\nEND LC_TIME\n");
    const std::string command = "cd " + folder.System() +
                                " && localedef -c -i source -f ./charmap ./" + name +
                                " >/dev/null 2>&1";
    // The status tells of warnings too, so the result is looked at instead.
    // NOLINTNEXTLINE(cert-env33-c): a fixed command on names of this test's own
    static_cast<void>(std::system(command.c_str()));
    ASSERT_TRUE(folder.Has(name)) << command;
}

TEST(Locale, PlainAndUnknownLocalesAreEnglish) {
    for (const Environment& environment :
         {Environment{}, Environment{{"LC_ALL", "C"}}, Environment{{"LANG", "POSIX"}},
          Environment{{"LANG", "C.UTF-8"}}, Environment{{"LC_ALL", "xx_YY.UTF-8"}}}) {
        ExpectSeparators(environment, ".|,|/|:");
    }
}

TEST(Locale, ReadsTheSeparatorsOfTheCategories) {
    const testing::TestFolder folder;
    MakeLocale(folder, "dots", ",", ".", "%a, %-d.%m.%Y", "%p %OH.%M.%S");
    MakeLocale(folder, "thin", ",", "<U202F>", "%D", "%T");
    MakeLocale(folder, "byte", ",", "<U00A0>", "%F", "%r");
    MakeLocale(folder, "odd", ",", "<U009A>", "%A %d %b-%Y", "%X%");
    MakeLocale(folder, "none", ".", "", "%Y<U5E74>%m", "%R");
    const std::vector<std::pair<Environment, std::string>> cases = {
        {{{"LANG", "dots"}}, ",|.|.|."},
        {{{"LANG", "thin"}}, ",|\u202F|/|:"},
        {{{"LANG", "byte"}}, ",|\u00A0|-|:"},
        {{{"LANG", "odd"}}, ",||/|:"},
        {{{"LANG", "none"}}, ".|,|/|:"},
        {{{"LANG", "byte"}, {"LC_TIME", "dots"}}, ",|\u00A0|.|."},
        {{{"LANG", "dots"}, {"LC_NUMERIC", "C"}}, ".|,|.|."},
        {{{"LC_ALL", "C"}, {"LC_TIME", "dots"}}, ".|,|/|:"},
        {{{"LC_ALL", "byte"}, {"LC_TIME", "dots"}, {"LANG", "C"}}, ",|\u00A0|-|:"},
    };
    for (auto [environment, expected] : cases) {
        environment["LOCPATH"] = folder.System();
        ExpectSeparators(environment, expected);
    }
}

}  // namespace

}  // namespace zarn
