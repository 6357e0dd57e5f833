#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace tavelo {

/// Passes a JSON text to the parser byte by byte and works around two of the parser's faults.
///
/// - It rejects a number that no double can hold, although the grammar allows it. We pass on only the first
///   two digits of each run outside strings. This changes numbers, which we never read, but not whether they
///   are well-formed.
/// - It takes a zero byte for the end of the text and ignores the rest. Outside strings we replace it with
///   another control character, which is an error.
class JsonCharacters final {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = char;

  /// Starts at the beginning of `rest`, which must outlive the iterator. An empty `rest` gives the end.
  explicit JsonCharacters(std::string_view rest) : rest_(rest) {}

  char operator*() const { return rest_.front() == '\0' && !inString_ ? '\x01' : rest_.front(); }

  JsonCharacters& operator++() {
    advance();
    while (!rest_.empty() && digits_ >= 2 && isDigit(rest_.front())) rest_.remove_prefix(1);
    return *this;
  }

  JsonCharacters operator++(int) {
    JsonCharacters before = *this;
    ++*this;
    return before;
  }

  /// Only for comparison with the end.
  bool operator==(const JsonCharacters& other) const { return rest_.size() == other.rest_.size(); }

 private:
  static constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

  void advance() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    digits_ = !inString_ && isDigit(c) ? digits_ + 1 : 0;
    if (c == '"' && !escaped_) inString_ = !inString_;
    escaped_ = inString_ && c == '\\' && !escaped_;
  }

  std::string_view rest_;
  unsigned digits_ = 0;
  bool inString_ = false;
  bool escaped_ = false;
};

}  // namespace tavelo
