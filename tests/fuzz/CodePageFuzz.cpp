// Texts and the code page. An input is a byte that chooses a position and a text.
#include "fuzz/Fuzz.h"
#include "runtime/CodePage.h"
#include "runtime/Text.h"
#include "settings/CryptPass.h"

namespace zarn::fuzz {

namespace {

void CheckCharacters(std::string_view text) {
    std::size_t count = 0;
    bool valid = true;
    for (std::string_view rest = text; !rest.empty(); ++count) {
        const DecodedCharacter character = DecodeCharacter(rest);
        std::string bytes;
        AppendCharacter(bytes, character.code);
        Require(character.valid ? rest.starts_with(bytes) && bytes.size() == character.bytes
                                : character.bytes == 1,
                "a character is written as it was read");
        valid = valid && character.valid;
        rest.remove_prefix(character.bytes);
    }
    Require(Length(text) == count && IsUtf8(text) == valid, "length and validity count characters");
}

void CheckCuts(std::string_view text, std::size_t position) {
    const std::size_t length = Length(text);
    const std::string_view left = Left(text, position);
    const std::string_view rest = Mid(text, position + 1);
    Require(std::string(left).append(rest) == text, "a cut loses nothing");
    Require(Length(left) == std::min(position, length), "the left part has the count asked for");
    Require(Right(text, length - std::min(position, length)) == rest, "right is what is not left");
    Require(Mid(text, position + 1, 2) == Left(rest, 2), "a middle is the start of the rest");
    Require(Length(PadLeft(text, position, '0')) == std::max(position, length), "padding fills up");
    const std::string_view trimmed = Trim(text);
    Require(!trimmed.starts_with(' ') && !trimmed.ends_with(' '), "trimmed ends are not blank");
}

void CheckPieces(std::string_view text, std::string_view separator) {
    if (text.empty() || separator.empty()) {
        return;
    }
    std::string joined;
    std::string replaced;
    for (const std::string& piece : Split(text, separator)) {
        joined.append(separator).append(piece);
        replaced.append("<>").append(piece);
        Require(!Contains(piece, separator), "no piece holds the separator");
    }
    Require(std::string_view(joined).substr(separator.size()) == text, "the pieces are the text");
    Require(Replace(text, separator, "<>") == std::string_view(replaced).substr(2),
            "replacing is splitting and joining");
}

void CheckCase(std::string_view text) {
    const std::string upper = UpperCase(text);
    Require(Length(upper) == Length(text), "upper case is one character for one");
    Require(UpperCase(upper) == upper, "upper case has no upper case");
    Require(IsUtf8(upper) == IsUtf8(text), "upper case is as valid as the text");
}

void CheckCodePage(std::string_view text) {
    const std::string decoded = DecodeText(text);
    Require(IsUtf8(decoded), "a file's text is UTF-8");
    Require(DecodeText(EncodeText(decoded)) == decoded, "a file's text comes back");
    if (IsUtf8(text)) {
        Require(DecodeText(EncodeText(text)) == text, "a text comes back from a file");
    } else if (!text.starts_with("\xEF\xBB\xBF")) {
        Require(EncodeText(decoded) == text, "single bytes come back");
        Require(EncodeText(text) == text, "what is no text is written as it stands");
    }
}

bool IsOfCodePage(std::string_view text) {
    while (!text.empty()) {
        const DecodedCharacter character = DecodeCharacter(text);
        if (!character.valid || character.code == 0 || !CodeOfCharacter(character.code)) {
            return false;
        }
        text.remove_prefix(character.bytes);
    }
    return true;
}

void CheckPassword(std::string_view text) {
    const std::string scrambled = CryptPass(text, true);
    const std::string back = CryptPass(scrambled, false);
    Require(IsUtf8(scrambled) && Length(scrambled) == Length(text), "scrambling keeps the length");
    Require(!Contains(scrambled, std::string_view("\0", 1)), "the store ends a text at a NUL");
    Require(IsOfCodePage(text) ? back == text : CryptPass(back, true) == scrambled,
            "a password comes back");
}

}  // namespace

}  // namespace zarn::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zarn::fuzz;
    std::string_view text = TextOf(data, size);
    const std::size_t position = TakeByte(text) % 32;
    CheckCharacters(text);
    CheckCuts(text, position);
    CheckPieces(text, text.substr(0, position % 4));
    CheckCase(text);
    CheckCodePage(text);
    CheckPassword(text);
    return 0;
}
