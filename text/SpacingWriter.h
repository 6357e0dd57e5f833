#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavelo {

/// Copies text and cleans up its spacing. Every run of tabs and spaces becomes one space, or nothing next to
/// a line feed, before a closing mark (comma, full stop, semicolon, colon, question mark, exclamation mark)
/// and at the very end. Other white space is copied unchanged.
class SpacingWriter final {
 public:
  /// `capacity`: the expected length in bytes.
  explicit SpacingWriter(std::size_t capacity) { text_.reserve(capacity); }

  /// Adds `part`. It does not matter how the text is split into parts.
  void append(std::string_view part);

  /// The text written so far.
  std::string_view text() const { return text_; }

 private:
  void appendWord(std::string_view word);

  std::string text_;
  bool blanksPending_ = false;
};

}  // namespace tavelo
