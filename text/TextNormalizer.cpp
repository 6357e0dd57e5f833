#include "text/TextNormalizer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "text/PhraseMatcher.h"
#include "text/SpacingWriter.h"
#include "text/SpokenPhrases.h"
#include "unicode/Unicode.h"

namespace tavelo {
namespace {

constexpr std::array<char32_t, 4> sentenceTerminators{'.', '!', '?', '\n'};

constexpr bool endsSentence(char32_t c) {
  return std::find(sentenceTerminators.begin(), sentenceTerminators.end(), c) != sentenceTerminators.end();
}

constexpr bool isAsciiLower(char c) { return c >= 'a' && c <= 'z'; }

}  // namespace

std::string TextNormalizer::normalize(std::string_view text) {
  if (!unicode::isWellFormed(text)) return normalize(unicode::wellFormed(text));
  text = unicode::trimmed(text);
  if (text.empty()) return {};

  SpacingWriter writer(text.size());
  PhraseMatcher matcher(text);
  std::size_t copied = 0;
  while (const auto occurrence = matcher.next()) {
    writer.append(text.substr(copied, occurrence->start - copied));
    writer.append(spokenPhraseReplacements[occurrence->phrase].replacement);
    copied = occurrence->end;
  }
  writer.append(text.substr(copied));
  return capitalizeSentenceStarts(unicode::trimmed(writer.text()));
}

std::string TextNormalizer::capitalizeSentenceStarts(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::size_t at = 0;
  while (at < text.size()) {
    // At a sentence start, only the first scalar that is not white space may become a capital.
    bool capitalizeNext = true;
    while (capitalizeNext && at < text.size()) {
      const std::size_t start = at;
      const char32_t scalar = unicode::nextScalar(text, at);
      const std::string_view bytes = text.substr(start, at - start);
      capitalizeNext = unicode::isWhiteSpace(scalar) || endsSentence(scalar);
      if (isAsciiLower(bytes.front())) {
        result += static_cast<char>(bytes.front() - 'a' + 'A');
      } else if (!capitalizeNext && unicode::isLetter(scalar)) {
        unicode::appendUpperCase(result, scalar);
      } else {
        result += bytes;
      }
    }
    // Copy the rest of the sentence unchanged.
    const std::size_t rest = at;
    while (at < text.size()) {
      if (endsSentence(static_cast<unsigned char>(text[at++]))) break;
    }
    result += text.substr(rest, at - rest);
  }
  return result;
}

}  // namespace tavelo
