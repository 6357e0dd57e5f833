#include <string>

#include <gtest/gtest.h>

#include "text/PreviewText.h"

namespace tavelo {
namespace {

std::string times(std::size_t count, const std::string& part) {
  std::string text;
  while (count-- > 0) text += part;
  return text;
}

TEST(PreviewText, NothingToShowBecomesTheNotice) {
  EXPECT_EQ(previewText(std::nullopt), "Đang tạo text...");
  EXPECT_EQ(previewText(""), "Đang tạo text...");
  EXPECT_EQ(previewText(" \t\n\u00A0\u2029"), "Đang tạo text...");
}

TEST(PreviewText, WhiteSpaceOfAnyKindBecomesOneSpace) {
  EXPECT_EQ(previewText("\n xin \r\n\t chào\u3000\u2028bạn "), "xin chào bạn");
  EXPECT_EQ(previewText("a\u200B b\xFF"), "a\u200B b\uFFFD");
}

TEST(PreviewText, OnlyTheLast72UserPerceivedCharactersAreShown) {
  const std::string decomposed = "e\u0302\u0301";
  EXPECT_EQ(previewText(times(72, decomposed)), times(72, decomposed));
  EXPECT_EQ(previewText("x" + times(72, decomposed)), "..." + times(72, decomposed));
  const std::string family = "👨‍👩‍👧";
  EXPECT_EQ(previewText("ab" + times(71, family)), "...b" + times(71, family));
  // A space at the cut is kept.
  EXPECT_EQ(previewText("a " + times(71, "b")), "... " + times(71, "b"));
}

}  // namespace
}  // namespace tavelo
