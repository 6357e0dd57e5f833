#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace tavelo {

/// Hands a JSON text to the parser byte by byte, without two things of which the parser makes too much.
///
/// - A number that no double can hold is an error to it, although the grammar allows it. Outside strings only
///   the first two digits of each run are passed on. That changes values, which nobody reads here, but never
///   whether a number is well-formed.
/// - A zero byte ends the text for it, and whatever follows would go unread. Outside strings it becomes
/// another
///   control character, which is an error.
class JsonCharacters final {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = char;

  /// The beginning of `rest`, which must outlive the iterator; of an empty one, the end.
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

  /// Only a comparison with the end makes sense, as in every pass over a text.
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
