#pragma once

#include <string>
#include <string_view>

namespace tavelo {

/// Turns a raw transcript into finished text: spoken punctuation becomes punctuation, spacing is cleaned up
/// and sentence starts are capitalised. No state; any thread.
class TextNormalizer final {
 public:
  TextNormalizer() = delete;

  /// The finished text. It may be empty and never begins or ends with white space. Accepts any input; each
  /// ill-formed UTF-8 sequence reads as U+FFFD. Linear time.
  static std::string normalize(std::string_view text);

 private:
  /// Capitalises the first letter of each sentence and lower-cases nothing. `text` must be well-formed.
  static std::string capitalizeSentenceStarts(std::string_view text);
};

}  // namespace tavelo
