#include "text/SpacingWriter.h"

namespace tavelo {
namespace {

constexpr bool refusesSpaceBefore(char c) {
  return c == ',' || c == '.' || c == ';' || c == ':' || c == '?' || c == '!' || c == '\n';
}

constexpr bool isBlank(char c) { return c == ' ' || c == '\t'; }

}  // namespace

void SpacingWriter::append(std::string_view part) {
  std::size_t at = 0;
  while (at < part.size()) {
    const std::size_t word = at;
    while (at < part.size() && !isBlank(part[at])) ++at;
    if (at > word) appendWord(part.substr(word, at - word));
    if (at < part.size()) blanksPending_ = true;
    while (at < part.size() && isBlank(part[at])) ++at;
  }
}

void SpacingWriter::appendWord(std::string_view word) {
  const bool behindLineFeed = !text_.empty() && text_.back() == '\n';
  if (blanksPending_ && !behindLineFeed && !refusesSpaceBefore(word.front())) {
    text_ += ' ';
  }
  blanksPending_ = false;
  text_ += word;
}

}  // namespace tavelo
