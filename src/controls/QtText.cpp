#include "controls/QtText.h"

#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr char16_t EscapeBase = 0xDC00;

bool IsEscape(char16_t unit) {
    return unit >= EscapeBase + 0x80 && unit <= EscapeBase + 0xFF;
}

}  // namespace

QString ToQt(std::string_view text) {
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    while (!text.empty()) {
        const DecodedCharacter character = DecodeCharacter(text);
        if (character.valid) {
            result.append(QChar::fromUcs4(character.code));
        } else {
            const auto byte = static_cast<unsigned char>(text.front());
            result.append(QChar(static_cast<char16_t>(EscapeBase + byte)));
        }
        text.remove_prefix(character.bytes);
    }
    return result;
}

std::string FromQt(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = text.at(index);
        const bool isPair = unit.isHighSurrogate() && index + 1 < text.size() &&
                            text.at(index + 1).isLowSurrogate();
        if (isPair) {
            ++index;
            AppendCharacter(result, QChar::surrogateToUcs4(unit, text.at(index)));
        } else if (IsEscape(unit.unicode())) {
            result.push_back(static_cast<char>(unit.unicode() - EscapeBase));
        } else {
            constexpr char32_t Replacement = 0xFFFD;
            AppendCharacter(result, unit.isSurrogate() ? Replacement : unit.unicode());
        }
    }
    return result;
}

}  // namespace zarn
