#include "runtime/CodePage.h"
#include "runtime/Product.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

TEST(Text, DecodesOnlyValidUtf8) {
    for (const char32_t code :
         {0x00U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
        std::string text;
        AppendCharacter(text, code);
        const DecodedCharacter character = DecodeCharacter(text + "\x80");
        EXPECT_EQ(std::tuple(character.code, character.bytes, character.valid, IsUtf8(text)),
                  std::tuple(code, text.size(), true, true));
    }
    for (const std::string_view text :
         {"\x80", "\xBF", "\xC1\xBF", "\xC3", "\xC3x", "\xE0\x9F\xBF", "\xE2\x82", "\xE2\x82x",
          "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
          "\xF8\x88\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(IsUtf8("ok" + std::string(text)) || DecodeCharacter(text).bytes > 1) << text;
    }
}

TEST(Text, CountsCharactersAndPassesBadBytesThrough) {
    // Six characters: two of ASCII, one each of two, three and four bytes, one stray byte.
    const std::string text = "a\u00E9\u20AC\U0001F600\xFFz";
    EXPECT_EQ(Length(text), 6U);
    using Case = std::tuple<std::size_t, std::string, std::string, std::string>;
    for (const auto& [count, left, right, middle] :
         {Case{0, "", "", "a\u00E9"}, Case{2, "a\u00E9", "\xFFz", "\u20AC\U0001F600"},
          Case{5, "a\u00E9\u20AC\U0001F600\xFF", "\u00E9\u20AC\U0001F600\xFFz", "z"},
          Case{6, text, text, ""}, Case{9, text, text, ""}}) {
        EXPECT_EQ(Left(text, count), left) << count;
        EXPECT_EQ(Right(text, count), right) << count;
        EXPECT_EQ(Mid(text, count + 1, 2), middle) << count;
    }
    EXPECT_EQ(UpperCase("az{`@\u00E9\u0161\u00DF\u03C9\u0451\U00010428\xE9\xC3"),
              "AZ{`@\u00C9\u0160\u00DF\u03A9\u0401\U00010400\xE9\xC3");
}

TEST(Text, CutsAndReplaces) {
    EXPECT_EQ(Trim("  \ta\r\n "), "\ta\r\n");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Split("", "/"), Names());
    EXPECT_EQ(Split("/a//b/", "/"), Names({"", "a", "", "b", ""}));
    EXPECT_EQ(Split("aaa", "aa"), Names({"", "a"}));
    EXPECT_EQ(Replace("aaaa.", "aa", "a"), "aa.");
    EXPECT_EQ(ProductText(), "Zarn File Splitter v" ZARN_VERSION " Pro");
}

TEST(Text, SaysWhatFailed) {
    std::string texts;
    for (int number = 0; number < 100; ++number) {
        const std::string text = ErrorText(static_cast<ErrorNumber>(number));
        texts += text.empty() ? "" : text + ".";
    }
    EXPECT_EQ(texts,
              "Overflow.Subscript out of range.Division by zero.Type mismatch.User interrupt "
              "occurred.Error in loading DLL.Bad file name or number."
              "File not found.Device I/O error.File already exists.Disk full.Too many files."
              "Device unavailable.Permission denied.Disk not ready.Path/File access error.Path not "
              "found.");
}

TEST(CodePage, EveryCodeComesBack) {
    for (unsigned int code = 0; code <= 0xFF; ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        EXPECT_EQ(CodeOfCharacter(CharacterOfCode(byte)), byte);
    }
    using Case = std::pair<std::uint8_t, char32_t>;
    for (const auto& [code, character] : {Case(0x7F, 0x7F), Case(0x80, 0x20AC), Case(0x81, 0x81),
                                          Case(0x9F, 0x178), Case(0xA0, 0xA0), Case(0xFF, 0xFF)}) {
        EXPECT_EQ(CharacterOfCode(code), character);
    }
    for (const char32_t character : {0x80U, 0x9FU, 0x100U, 0x1F600U}) {
        EXPECT_FALSE(CodeOfCharacter(character)) << static_cast<std::uint32_t>(character);
    }
}

TEST(CodePage, WritesOneByteACharacterUnlessANameWouldBeLost) {
    using Case = std::pair<std::string, std::string>;
    // The characters C3 and A9 are, as codes, the UTF-8 form of another one.
    for (const auto& [text, bytes] :
         {Case("plain\r\n", "plain\r\n"), Case("caf\u00E9 \u20AC", "caf\xE9 \x80"),
          Case("\u00E9\u03C9", "\u00E9\u03C9"), Case("\u00C3\u00A9", "\u00C3\u00A9"),
          Case("\u00C3\u00A9\u00E9", "\xC3\xA9\xE9"),
          // Bytes like a byte-order mark would be passed over, and so would the mark itself.
          Case("\u00EF\u00BB\u00BF\u00E9", "\u00EF\u00BB\u00BF\u00E9"),
          Case("\uFEFF\u00E9", "\uFEFF\uFEFF\u00E9")}) {
        EXPECT_EQ(EncodeText(text), bytes);
        EXPECT_EQ(DecodeText(bytes), text);
    }
    EXPECT_EQ(EncodeText("a\xE9\u00E8"), "a\xE9\u00E8");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\u00E9"), "\u00E9");
}

}  // namespace
}  // namespace zarn::testing
