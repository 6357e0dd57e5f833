#include "text/PhraseMatcher.h"

#include "unicode/Unicode.h"

namespace tavelo {
namespace {

char32_t takeScalar(std::string_view text, std::size_t& offset) {
  const auto byte = static_cast<unsigned char>(text[offset]);
  if (byte >= 0x80) return unicode::nextScalar(text, offset);
  ++offset;
  return byte;
}

std::size_t behindMarks(std::string_view text, std::size_t offset) {
  for (std::size_t behind = offset; offset < text.size(); offset = behind) {
    if (!unicode::isMark(takeScalar(text, behind))) break;
  }
  return offset;
}

}  // namespace

std::optional<PhraseMatcher::Occurrence> PhraseMatcher::next() {
  while (true) {
    while (given_ < candidates_.size()) {
      const Candidate& candidate = candidates_[given_++];
      if (candidate.claim == Claim::granted) return candidate.occurrence;
    }
    if (offset_ >= text_.size()) return std::nullopt;
    collectCandidates();
    for (std::size_t phrase = 0; phrase < spokenPhraseReplacements.size(); ++phrase) {
      for (std::size_t index = 0; index < candidates_.size(); ++index) {
        if (candidates_[index].occurrence.phrase == phrase) grant(index);
      }
    }
  }
}

// Goes on until no later phrase can overlap a candidate.
void PhraseMatcher::collectCandidates() {
  candidates_.clear();
  given_ = 0;
  while (offset_ < text_.size()) {
    const std::size_t start = offset_;
    const PhraseAutomaton::Symbol symbol = automaton_.symbol(takeScalar(text_, offset_));
    if (symbol == PhraseAutomaton::skippedSymbol) continue;
    starts_[symbols_++ % starts_.size()] = start;
    state_ = automaton_.next(state_, symbol);
    if (automaton_.ending(state_) != 0) addCandidates(automaton_.ending(state_));
    if (!candidates_.empty() && startOfUnfinished() >= candidates_.back().occurrence.end) return;
  }
}

void PhraseMatcher::addCandidates(unsigned ending) {
  const std::size_t end = behindMarks(text_, offset_);
  for (std::size_t phrase = 0; phrase < spokenPhraseReplacements.size(); ++phrase) {
    if ((ending >> phrase & 1U) == 0) continue;
    candidates_.push_back({{startOfLast(automaton_.length(phrase)), end, phrase}});
  }
}

std::size_t PhraseMatcher::startOfUnfinished() const {
  const std::size_t depth = automaton_.depth(state_);
  return depth == 0 ? offset_ : startOfLast(depth);
}

std::size_t PhraseMatcher::startOfLast(std::size_t symbols) const {
  return starts_[(symbols_ - symbols) % starts_.size()];
}

// Overlapping candidates that end no later stand directly before this one. One that ends later refused this
// one when it was granted itself.
void PhraseMatcher::grant(std::size_t index) {
  Candidate& candidate = candidates_[index];
  if (candidate.claim == Claim::refused) return;
  candidate.claim = Claim::granted;
  std::size_t first = index;
  while (first > 0 && candidates_[first - 1].occurrence.end > candidate.occurrence.start) {
    if (candidates_[--first].claim == Claim::granted) candidate.claim = Claim::refused;
  }
  if (candidate.claim == Claim::refused) return;
  for (; first < index; ++first) candidates_[first].claim = Claim::refused;
}

}  // namespace tavelo
