#include <variant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "recordings/Transcripts.h"
#include "recordings/WordErrors.h"

namespace tavelo::recordings {
namespace {

TEST(WordErrors, CountTheFewestChanges) {
  struct Row {
    const char* said;
    const char* heard;
    std::size_t words, substitutions, deletions, insertions;
  };
  const Row rows[] = {
      {"", "", 0, 0, 0, 0},
      {"", "một", 0, 0, 0, 1},
      {"một hai", "", 2, 0, 2, 0},
      {"một hai ba", "một ba", 3, 0, 1, 0},
      {"một ba", "một hai ba", 2, 0, 0, 1},
      {"một hai ba", "một bốn ba năm", 3, 1, 0, 1},
      {"ba bốn năm", "hai ba bốn", 3, 0, 1, 1},
      {"sáu bảy tám chín mười", "tám chín mười sáu bảy", 5, 0, 2, 2},
      // Case, punctuation, white space and the form of the marks do not count; the marks themselves do.
      {"Xin CHÀO,\tĐà Nẵng!", "xin cha\u0300o – đà nẵng…", 4, 0, 0, 0},
      {"chào", "chao", 1, 1, 0, 0},
  };
  for (const auto& row : rows) {
    const auto errors = compareWords(row.said, row.heard);
    EXPECT_THAT((std::vector{errors.words, errors.substitutions, errors.deletions, errors.insertions}),
                testing::ElementsAre(row.words, row.substitutions, row.deletions, row.insertions))
        << row.said << " / " << row.heard;
  }
  auto sum = compareWords("một hai ba", "một");
  sum += compareWords("bốn", "bốn năm");
  EXPECT_DOUBLE_EQ(sum.rate(), 3.0 / 4);
}

TEST(Transcripts, AreFoundByPathNameOrStemAndBadLinesAreTold) {
  const auto parsed = Transcripts::parse(
      "\xEF\xBB\xBF"
      "a\tmột\r\n\nb.wav\thai\tba\nx/c.wav\t\n\u1ebf\tbốn");
  const auto& transcripts = std::get<Transcripts>(parsed);
  EXPECT_EQ(transcripts.find("/y/a.wav"), "một");
  EXPECT_EQ(transcripts.find("b.wav"), "hai\tba");
  EXPECT_EQ(transcripts.find("x/c.wav"), "");
  EXPECT_EQ(transcripts.find("e\u0302\u0301.wav"), "bốn");
  EXPECT_EQ(transcripts.find("y/c.wav"), std::nullopt);
  EXPECT_EQ(std::get<std::string>(Transcripts::parse("a\tb\nc")), "line 2 has no tab");
  EXPECT_EQ(std::get<std::string>(Transcripts::parse("a\tb\na\tc\n")),
            "line 2 names a recording for the second time");
}

}  // namespace
}  // namespace tavelo::recordings
