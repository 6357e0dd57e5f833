#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "bench/StepwiseNormalizer.h"
#include "text/SpokenPhrases.h"
#include "text/TextNormalizer.h"
#include "unicode/Unicode.h"

namespace tavelo {
namespace {

using bench::StepwiseNormalizer;
using namespace std::string_literals;

struct Case {
  std::string raw;
  std::string finished;
};

void expectFinished(const std::vector<Case>& cases) {
  for (const auto& [raw, finished] : cases)
    EXPECT_EQ(TextNormalizer::normalize(raw), finished) << testing::PrintToString(raw);
}

// All the examples that the rules are based on.
TEST(TextNormalizer, MakesFinishedTextOfEveryAgreedExample) {
  expectFinished({
      {"xin chào dấu phẩy tôi là Nam dấu chấm", "Xin chào, tôi là Nam."},
      {"hôm nay trời đẹp dấu chấm than xuống dòng bạn có khỏe không dấu chấm hỏi",
       "Hôm nay trời đẹp!\nBạn có khỏe không?"},
      {"xong chấm xuống dòng tiếp theo", "Xong.\nTiếp theo"},
      {"được dấu chấm phẩy tiếp tục", "Được; tiếp tục"},
      {"danh sách dấu hai chấm táo dấu phẩy cam", "Danh sách: táo, cam"},
      {"mở ngoặc ghi chú đóng ngoặc", "( ghi chú )"},
      {"số điện thoại gạch ngang", "Số điện thoại -"},
      {"Dấu Chấm", "."},
      {"dau cham", "."},
      {"DAU CHAM", "."},
      {"dâu châm", "."},
      {"dấu chấm dấu chấm", ".."},
      {"dấu phẩy xin chào", ", xin chào"},
      {"3 con mèo dấu chấm", "3 con mèo."},
      {"xin chào.tạm biệt", "Xin chào.Tạm biệt"},
      {"đi thôi dấu chấm ý kiến của bạn", "Đi thôi. Ý kiến của bạn"},
      {"một\t\t  hai", "Một hai"},
      {"tại sao \t dấu chấm hỏi", "Tại sao?"},
      {"  câu một dấu chấm   câu hai  ", "Câu một. Câu hai"},
      {"kết thúc dòng mới", "Kết thúc"},
      {"DÒNG MỚI chào", "Chào"},
      {"xuống dòng", ""},
      {"   \t\n ", ""},
      {"", ""},
  });
}

TEST(TextNormalizer, TakesPhrasesThatOverlapFromTheLeft) {
  expectFinished({
      {"xuống dòng mới", "Mới"},
      {"a dấu chấm xuống dòng mới", "A dấu.\nMới"},
      {"a dấu hai chấm xuống dòng b", "A dấu hai.\nB"},
      {"a gạch ngangạch ngang b", "A -ạch ngang b"},
      {"a mở ngoặchấm xuống dòng b", "A mở ngoặ.\nB"},
      {"a dấu chấm hỏithan", "A?Than"},
  });
}

TEST(TextNormalizer, KnowsLettersMarksAndEncodings) {
  expectFinished({
      // đ is a letter of its own: this is "to close anew", not a new line.
      {"đóng mới", "Đóng mới"},
      {"dong ngoac", "Dong ngoac"},
      {"a da\u0302\u0301u cha\u0302\u0301m b", "A. B"},
      {"a dấu\u0301 \u0301chấm\u0301\u20DD b", "A. B"},
      // A spacing mark (U+0903) inside a phrase prevents the match; after its last
      // letter it is replaced with it.
      {"a dấ\u0903u chấm", "A dấ\u0903u chấm"},
      {"a dấu chấm\u0903\u0301 b", "A. B"},
      // A leading mark counts as the sentence's first letter.
      {"\u0301xin", "\u0301xin"},
      {"ßa", "SSa"},
      {"dấu chấm\u00A0\u200Bb", ".\u00A0\u200Bb"},
      {"\u3000a\u2028", "A"},
      {"a \u00A0 dấu phẩy b", "A \u00A0, b"},
      {"\U00010428a dấu chấm \U00010429", "\U00010400a. \U00010401"},
      {"\xE1\xBB dấu chấm\x80 a \xED\xA0\x80", "\uFFFD.\uFFFD a \uFFFD\uFFFD\uFFFD"},
      {"a\0 dấu chấm \0b"s, "A\0. \0b"s},
  });
}

/// Makes texts that exercise all the rules at once.
class RandomTranscript final {
 public:
  explicit RandomTranscript(unsigned seed) : random_(seed) {}

  std::string next() {
    std::string text;
    for (std::size_t count = pick(24); count > 0; --count) appendPiece(text);
    return text;
  }

 private:
  std::size_t pick(std::size_t count) { return random_() % count; }

  void appendPiece(std::string& text) {
    static const std::array<std::string_view, 40> oddities{
        " ",        " ",          " ",          "  ",
        "\t",       "\n",         "\r",         "\u00A0",
        "\u2028",   ".",          ",",          "?",
        ":",        "(",          "-",          "\u0301",
        "\u0302",   "\u0323",     "\u20DD",     "\u0903",
        "d",        "đ",          "Đ",          "D",
        "g",        "c",          "x",          "mới",
        "dòng",     "chấm",       "\u212A",     "\u1EAE",
        "\xE1\xBB", "\x80",       "\xFF",       "\xED\xA0\x80",
        "ß",        "\U0001D400", "\U00010428", std::string_view("\0", 1)};
    if (pick(2) == 0) {
      text += oddities[pick(oddities.size())];
    } else {
      appendPhrase(text, spokenPhraseReplacements[pick(spokenPhraseReplacements.size())].phrase);
    }
  }

  /// Appends a phrase or a piece of one, in any case, with or without its marks, or with additional marks.
  void appendPhrase(std::string& text, std::string_view phrase) {
    const std::size_t style = pick(5);
    const std::size_t from = pick(3) == 0 ? pick(phrase.size()) : 0;
    const std::size_t to = pick(3) == 0 ? from + pick(phrase.size() - from) : phrase.size();
    std::size_t offset = 0;
    while (offset < to) {
      const std::size_t start = offset;
      const char32_t letter = unicode::nextScalar(phrase, offset);
      if (start < from) continue;
      if (style == 1) unicode::appendUpperCase(text, letter);
      if (style == 2) unicode::appendScalar(text, unicode::baseLetter(letter));
      if (style != 1 && style != 2) unicode::appendScalar(text, letter);
      if (style == 3 && pick(4) == 0) text += pick(4) == 0 ? "\u0903" : "\u0302\u0301";
    }
  }

  std::mt19937 random_;
};

// The one-pass search must give the same result as replacing one phrase after the other.
TEST(TextNormalizer, AgreesWithReplacingPhraseAfterPhraseOnRandomTexts) {
  StepwiseNormalizer stepwise(StepwiseNormalizer::Search::letters);
  RandomTranscript transcripts(1);
  for (int i = 0; i < 6000; ++i) {
    const std::string raw = transcripts.next();
    ASSERT_EQ(TextNormalizer::normalize(raw), stepwise.normalize(raw)) << testing::PrintToString(raw);
  }
}

TEST(TextNormalizer, EveryBaseLetterAndMarkIsTreatedAsIcuTreatsIt) {
  StepwiseNormalizer stepwise(StepwiseNormalizer::Search::letters);
  for (char32_t scalar = 1; scalar < 0x3100; ++scalar) {
    std::string raw = "x dấu ch";
    unicode::appendScalar(raw, scalar);
    raw += "m ";
    unicode::appendScalar(raw, scalar);
    raw += "dấu phẩy";
    unicode::appendScalar(raw, scalar);
    ASSERT_EQ(TextNormalizer::normalize(raw), stepwise.normalize(raw)) << static_cast<std::uint32_t>(scalar);
  }
}

std::string repeated(std::string_view part, std::size_t length) {
  std::string text;
  while (text.size() < length) text += part;
  return text;
}

// A quadratic algorithm would run into the test's time limit.
TEST(TextNormalizer, MegabytesOfTheWorstKindTakeLinearTime) {
  constexpr std::size_t length = 3'000'000;
  EXPECT_EQ(TextNormalizer::normalize(repeated("dấu chấm", length)).find_first_not_of('.'),
            std::string::npos);
  const std::string chain = TextNormalizer::normalize(repeated("gạch ngangạch ngan", length));
  EXPECT_EQ(chain.substr(0, 12), "-ạch ngan-");
  EXPECT_EQ(TextNormalizer::normalize("a" + repeated(" \t", length) + "b"), "A b");
  EXPECT_EQ(TextNormalizer::normalize("dấu chấm" + repeated("\u0301", length) + "b"), ".B");
  EXPECT_EQ(TextNormalizer::normalize(repeated(" \xFF", length)).size(), length / 2 * 4 - 1);
}

}  // namespace
}  // namespace tavelo
