#include "recordings/WordErrors.h"

#include <algorithm>
#include <utility>

#include "unicode/Unicode.h"

namespace tavelo::recordings {

double WordErrors::rate() const {
  if (words == 0) return wrong() == 0 ? 0 : 1;
  return static_cast<double>(wrong()) / static_cast<double>(words);
}

WordErrors& WordErrors::operator+=(const WordErrors& other) {
  words += other.words;
  substitutions += other.substitutions;
  deletions += other.deletions;
  insertions += other.insertions;
  return *this;
}

std::vector<std::string> comparedWords(std::string_view text) {
  const std::string plain = unicode::lowerCased(unicode::inComposedForm(text));
  std::vector<std::string> words;
  std::string word;
  const auto endWord = [&] {
    if (!word.empty()) words.push_back(std::exchange(word, {}));
  };
  for (std::size_t at = 0; at < plain.size();) {
    const char32_t scalar = unicode::nextScalar(plain, at);
    if (unicode::isWhiteSpace(scalar) || unicode::isPunctuation(scalar)) {
      endWord();
    } else {
      unicode::appendScalar(word, scalar);
    }
  }
  endWord();
  return words;
}

WordErrors compareWords(std::string_view said, std::string_view heard) {
  const auto wanted = comparedWords(said);
  const auto got = comparedWords(heard);
  // `row[j]` is what makes the first `j` words heard of those words said that the loop has come to.
  std::vector<WordErrors> row(got.size() + 1);
  for (std::size_t j = 0; j < row.size(); ++j) row[j].insertions = j;
  for (const auto& word : wanted) {
    WordErrors diagonal = row[0];
    ++row[0].deletions;
    for (std::size_t j = 1; j < row.size(); ++j) {
      WordErrors replaced = diagonal;
      if (word != got[j - 1]) ++replaced.substitutions;
      WordErrors deleted = diagonal = row[j];
      ++deleted.deletions;
      WordErrors inserted = row[j - 1];
      ++inserted.insertions;
      row[j] = std::min({replaced, deleted, inserted},
                        [](const auto& a, const auto& b) { return a.wrong() < b.wrong(); });
    }
  }
  auto errors = row.back();
  errors.words = wanted.size();
  return errors;
}

}  // namespace tavelo::recordings
