#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "runtime/CodePage.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

using Parts = std::vector<std::string>;

TEST(Text, DecodesOnlyValidUtf8) {
    for (const char32_t code :
         {0x00U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
        std::string text;
        AppendCharacter(text, code);
        const DecodedCharacter character = DecodeCharacter(text + "\x80");
        EXPECT_TRUE(character.valid) << static_cast<std::uint32_t>(code);
        EXPECT_EQ(character.code, code);
        EXPECT_EQ(character.bytes, text.size());
        EXPECT_TRUE(IsUtf8(text));
    }
    for (const std::string_view text :
         {"\x80", "\xBF", "\xC1\xBF", "\xC3", "\xC3x", "\xE0\x9F\xBF", "\xE2\x82", "\xE2\x82x",
          "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"}) {
        const DecodedCharacter character = DecodeCharacter(text);
        EXPECT_FALSE(character.valid) << text;
        EXPECT_EQ(character.bytes, 1U) << text;
        EXPECT_FALSE(IsUtf8("ok" + std::string(text))) << text;
    }
}

TEST(Text, CountsCharactersAndPassesBadBytesThrough) {
    // Six characters: two of ASCII, one each of two, three and four bytes, one stray byte.
    const std::string text = "a\u00E9\u20AC\U0001F600\xFFz";
    EXPECT_EQ(Length(text), 6U);
    using Case = std::tuple<std::size_t, std::string_view, std::string_view, std::string_view>;
    const std::vector<Case> cases = {
        {0, "", "", "a\u00E9"},
        {2, "a\u00E9", "\xFFz", "\u20AC\U0001F600"},
        {3, "a\u00E9\u20AC", "\U0001F600\xFFz", "\U0001F600\xFF"},
        {5, "a\u00E9\u20AC\U0001F600\xFF", "\u00E9\u20AC\U0001F600\xFFz", "z"},
        {6, text, text, ""},
        {9, text, text, ""},
    };
    for (const auto& [count, left, right, middle] : cases) {
        EXPECT_EQ(Left(text, count), left) << count;
        EXPECT_EQ(Right(text, count), right) << count;
        EXPECT_EQ(Mid(text, count + 1, 2), middle) << count;
    }
    EXPECT_EQ(Mid(text, 4), "\U0001F600\xFFz");
    EXPECT_EQ(UpperCase("az{`@\u00E9\u0161\u00DF\u03C9\u0451\U00010428\xE9\xC3"),
              "AZ{`@\u00C9\u0160\u00DF\u03A9\u0401\U00010400\xE9\xC3");
}

TEST(Text, CutsAndReplaces) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\r\n "), "\ta\r\n");
    EXPECT_EQ(Trim("   "), "");

    EXPECT_EQ(Split("", "/"), Parts());
    EXPECT_EQ(Split("abc", "/"), Parts({"abc"}));
    EXPECT_EQ(Split("/a//b/", "/"), Parts({"", "a", "", "b", ""}));
    EXPECT_EQ(Split("a\r\nb\nc\r\n", "\r\n"), Parts({"a", "b\nc", ""}));
    EXPECT_EQ(Split("aaa", "aa"), Parts({"", "a"}));

    EXPECT_EQ(Replace("aaaa.", "aa", "a"), "aa.");
    EXPECT_EQ(Replace("a.txt.txt", ".txt", ""), "a");
    EXPECT_EQ(Replace("Abc", "a", "x"), "Abc");

    EXPECT_TRUE(Contains("Removable", "mov"));
    EXPECT_FALSE(Contains("Removable", "MOV"));

    EXPECT_EQ(FunctionLastPathItem("C:\\dir\\a/b.txt"), "a/b.txt");
    EXPECT_EQ(FunctionLastPathItem("C:\\dir\\"), "");
    EXPECT_EQ(FunctionLastPathItem("a.txt"), "a.txt");
}

TEST(CodePage, EveryCodeComesBack) {
    for (unsigned int code = 0; code <= 0xFF; ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        EXPECT_EQ(CodeOfCharacter(CharacterOfCode(byte)), byte);
    }
    using Case = std::pair<std::uint8_t, char32_t>;
    const std::vector<Case> cases = {
        {0x7F, 0x7F},   {0x80, 0x20AC}, {0x81, 0x81}, {0x8A, 0x160}, {0x92, 0x2019},
        {0x99, 0x2122}, {0x9F, 0x178},  {0xA0, 0xA0}, {0xFF, 0xFF},
    };
    for (const auto& [code, character] : cases) {
        EXPECT_EQ(CharacterOfCode(code), character);
    }
    for (const char32_t character : {0x80U, 0x9FU, 0x100U, 0x3C9U, 0x1F600U}) {
        EXPECT_FALSE(CodeOfCharacter(character)) << static_cast<std::uint32_t>(character);
    }
}

TEST(CodePage, WritesOneByteACharacterUnlessANameWouldBeLost) {
    using Case = std::pair<std::string_view, std::string_view>;
    const std::vector<Case> cases = {
        {"", ""},
        {"plain\r\n", "plain\r\n"},
        {"caf\u00E9 \u20AC", "caf\xE9 \x80"},
        {"\u00E9\u03C9", "\u00E9\u03C9"},
        // These two characters' codes, C3 and A9, are the UTF-8 form of another one.
        {"\u00C3\u00A9", "\u00C3\u00A9"},
        {"\u00C3\u00A9\u00E9", "\xC3\xA9\xE9"},
    };
    for (const auto& [text, bytes] : cases) {
        EXPECT_EQ(EncodeText(text), bytes);
        EXPECT_EQ(DecodeText(bytes), text);
    }
    EXPECT_EQ(EncodeText("a\xE9\u00E8"), "a\xE9\xE8");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\u00E9"), "\u00E9");
}

}  // namespace

}  // namespace zarn
