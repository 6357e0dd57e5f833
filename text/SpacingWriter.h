#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavelo {

/// Copies text and cleans its spacing up on the way: every run of tabs and spaces becomes one space, or
/// nothing beside a line feed and before a closing mark (comma, full stop, semicolon, colon, question and
/// exclamation mark). Spaces at the very end are left out. Other white space is copied as it is.
class SpacingWriter final {
 public:
  /// `capacity`: the expected length in bytes.
  explicit SpacingWriter(std::size_t capacity) { text_.reserve(capacity); }

  /// Adds `part`; how the text is cut into parts makes no difference.
  void append(std::string_view part);

  /// What has been written.
  std::string_view text() const { return text_; }

 private:
  void appendWord(std::string_view word);

  std::string text_;
  bool blanksPending_ = false;
};

}  // namespace tavelo
