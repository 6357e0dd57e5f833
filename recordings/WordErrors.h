#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tavelo::recordings {

/// How a transcript differs from what was said. A plain value.
struct WordErrors {
  /// The words that were said.
  std::size_t words = 0;
  std::size_t substitutions = 0;
  std::size_t deletions = 0;
  std::size_t insertions = 0;

  std::size_t wrong() const { return substitutions + deletions + insertions; }
  /// The word error rate; 0 if nothing was said and nothing heard, 1 if nothing was said.
  double rate() const;
  WordErrors& operator+=(const WordErrors& other);
};

/// The words of a text as they are compared: composed (NFC), in lower case, without punctuation.
std::vector<std::string> comparedWords(std::string_view text);

/// The fewest changes that make `heard` of `said`. Time grows with the product of their lengths, memory with
/// the length of one.
WordErrors compareWords(std::string_view said, std::string_view heard);

}  // namespace tavelo::recordings
