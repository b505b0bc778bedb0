#include "runtime/Locale.h"

#include <langinfo.h>
#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale is not in <clocale>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "runtime/Text.h"

namespace zarn {

namespace {

/// One category of a locale, apart from the process's own.
class LocaleCategory {
  public:
    LocaleCategory(int mask, const std::string& name)
        : locale_(IsPlain(name) ? nullptr : newlocale(mask, name.c_str(), nullptr)) {}
    ~LocaleCategory() {
        if (locale_ != nullptr) {
            freelocale(locale_);
        }
    }
    LocaleCategory(const LocaleCategory&) = delete;
    LocaleCategory& operator=(const LocaleCategory&) = delete;

    /// False for the C locale, which is not worth loading, and for an unknown one.
    [[nodiscard]] bool IsLoaded() const { return locale_ != nullptr; }

    [[nodiscard]] std::string Item(nl_item item) const { return nl_langinfo_l(item, locale_); }

  private:
    static bool IsPlain(std::string_view name) {
        return name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.");
    }

    locale_t locale_;
};

/// The locale that the environment names for a category, by the order that POSIX gives.
std::string LocaleName(const char* category) {
    for (const char* const variable : {"LC_ALL", category, "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

/// A separator in UTF-8; empty if its character set is not known. Of the single-byte sets, only
/// the no-break space of the ISO 8859 family occurs in practice.
std::string Utf8Separator(const std::string& separator) {
    if (IsUtf8(separator)) {
        return separator;
    }
    return separator == "\xA0" ? "\xC2\xA0" : "";
}

/// The separator inside a conversion that stands for several numbers; empty for any other.
std::string SeparatorOfConversion(char conversion) {
    switch (conversion) {
        case 'D':
            return "/";
        case 'F':
            return "-";
        case 'R':
        case 'T':
            return ":";
        default:
            return {};
    }
}

/// False for the words that some languages put behind year, month and day.
bool IsSeparator(std::string_view literal) {
    return !literal.empty() &&
           std::ranges::all_of(literal, [](unsigned char byte) { return byte < 0x80; });
}

/// The characters between the first two neighbouring numbers of a `strftime` format; empty if
/// no separator stands there. Names of days and the marker of the half day are passed over.
std::string SeparatorOfFormat(std::string_view format) {
    constexpr std::string_view Numbers = "deHIklmMSyY";
    constexpr std::string_view Flags = "-_0^#EO";
    bool isBehindNumber = false;
    for (std::size_t end = format.find('%'); end != std::string_view::npos;
         end = format.find('%')) {
        const std::string_view literal = format.substr(0, end);
        format.remove_prefix(std::min(format.find_first_not_of(Flags, end + 1), format.size()));
        if (format.empty()) {
            break;
        }
        const char conversion = format.front();
        format.remove_prefix(1);
        const bool isNumber = Numbers.find(conversion) != std::string_view::npos;
        if (isBehindNumber && isNumber && IsSeparator(literal)) {
            return std::string(literal);
        }
        if (std::string inside = SeparatorOfConversion(conversion); !inside.empty()) {
            return inside;
        }
        isBehindNumber = isNumber;
    }
    return {};
}

void ReadNumeric(LocaleSeparators& separators) {
    const LocaleCategory numeric(LC_NUMERIC_MASK, LocaleName("LC_NUMERIC"));
    if (!numeric.IsLoaded()) {
        return;
    }
    const std::string decimal = Utf8Separator(numeric.Item(RADIXCHAR));
    const std::string group = Utf8Separator(numeric.Item(THOUSEP));
    if (decimal.empty() || (decimal == separators.decimal && group.empty())) {
        return;
    }
    separators.decimal = decimal;
    separators.group = group;
}

void ReadTime(LocaleSeparators& separators) {
    const LocaleCategory time(LC_TIME_MASK, LocaleName("LC_TIME"));
    if (!time.IsLoaded()) {
        return;
    }
    const std::string date = SeparatorOfFormat(time.Item(D_FMT));
    if (!date.empty()) {
        separators.date = date;
    }
    const std::string clock = SeparatorOfFormat(time.Item(T_FMT));
    if (!clock.empty()) {
        separators.time = clock;
    }
}

}  // namespace

LocaleSeparators ReadLocaleSeparators() {
    LocaleSeparators separators;
    ReadNumeric(separators);
    ReadTime(separators);
    return separators;
}

}  // namespace zarn
