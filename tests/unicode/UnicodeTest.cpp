#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "unicode/Unicode.h"

namespace tavelo::unicode {
namespace {

using namespace std::string_literals;

std::string upper(char32_t scalar) {
  std::string text;
  appendUpperCase(text, scalar);
  return text;
}

TEST(Unicode, EachIllFormedSequenceReadsAsOneReplacementInBothDirections) {
  // A lone continuation byte, a truncated sequence, a surrogate (three replacements), an overlong form (two),
  // and a byte that UTF-8 never uses.
  const std::string text =
      "\x80"
      "a\xE1\xBB"
      "b\xED\xA0\x80"
      "c\xC0\x80"
      "d\xFF";
  EXPECT_EQ(wellFormed(text), "\uFFFDa\uFFFDb\uFFFD\uFFFD\uFFFDc\uFFFD\uFFFDd\uFFFD");
  EXPECT_FALSE(isWellFormed(text));
  EXPECT_TRUE(isWellFormed("a\0đ\uFFFD😀"s));
  std::u32string forward;
  for (std::size_t at = 0; at < text.size();) forward += nextScalar(text, at);
  std::u32string backward;
  for (std::size_t at = text.size(); at > 0;) backward.insert(backward.begin(), previousScalar(text, at));
  EXPECT_EQ(forward, backward);
}

TEST(Unicode, WhiteSpaceIsSeparatorsAndLineBreaksOnly) {
  for (const char32_t white :
       std::u32string_view(U"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2028\u2029\u202F\u3000")) {
    EXPECT_TRUE(isWhiteSpace(white)) << static_cast<std::uint32_t>(white);
  }
  for (const char32_t other : {U'a', U'\0', U'\u001C', U'\u200B', U'\uFEFF', U'\u180E'})
    EXPECT_FALSE(isWhiteSpace(other));
  EXPECT_EQ(trimmed("\u3000\n a b\u00A0\t"), "a b");
  EXPECT_EQ(trimmed(" \u2028"), "");
}

TEST(Unicode, BaseLettersDropVietnameseMarksButNotTheStroke) {
  for (const char32_t letter : std::u32string_view(U"aàáảãạăằắẳẵặâầấẩẫậAÀẬ")) {
    EXPECT_EQ(baseLetter(letter), U'a');
  }
  EXPECT_EQ(baseLetter(U'Ữ'), U'u');
  EXPECT_EQ(baseLetter(U'Đ'), U'đ');
  EXPECT_NE(baseLetter(U'đ'), U'd');
  EXPECT_TRUE(isDiacritic(U'\u0301') && isDiacritic(U'\u20DD') && !isDiacritic(U'\u0903'));
  EXPECT_TRUE(isMark(U'\u0903') && isLetter(U'\u0903') && isLetter(U'đ') && !isLetter(U'3') && !isMark(U'a'));
}

TEST(Unicode, CaseMappingIsFullAndKnowsNoLocale) {
  EXPECT_EQ(upper(U'ß'), "SS");
  EXPECT_EQ(upper(U'ế'), "Ế");
  EXPECT_EQ(upper(U'i'), "I");
  EXPECT_EQ(lowerCased("DÁN VÀ İ"), "dán và i\u0307");
}

TEST(Unicode, ComparisonsSeeThroughTheEncodingOfALetterButNotItsMarks) {
  EXPECT_TRUE(canonicallyEqual("Ch\u00E8n \u1EBF", "Che\u0300n e\u0302\u0301"));
  EXPECT_FALSE(canonicallyEqual("chèn", "chen"));
  EXPECT_TRUE(canonicallyContains("xin cha\u0300o bạn", "chào"));
  EXPECT_FALSE(canonicallyContains("xin chào", "cha"));
  EXPECT_FALSE(canonicallyContains("xin cha\u0300o", "cha"));
  EXPECT_TRUE(canonicallyContains("cha\u0323\u0323 cha", "cha"));
  EXPECT_TRUE(canonicallyContains("", ""));
  EXPECT_FALSE(canonicallyContains("Chào", "chào"));
}

TEST(Unicode, Utf16LengthsAndReplacementsCountCodeUnits) {
  EXPECT_EQ(utf16Length("aế😀e\u0301\xFF"), 7U);
  EXPECT_EQ(replacingUtf16("a😀b", 1, 2, "ế"), "aếb");
  EXPECT_EQ(replacingUtf16("ab", 2, 0, "c"), "abc");
  EXPECT_EQ(replacingUtf16("a😀b", 2, 0, "-"), "a\uFFFD-\uFFFDb");
}

}  // namespace
}  // namespace tavelo::unicode
