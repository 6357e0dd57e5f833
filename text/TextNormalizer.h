#pragma once

#include <string>
#include <string_view>

namespace tavelo {

/// Turns a raw transcript into finished text: spoken punctuation becomes punctuation, spacing is cleaned up
/// and sentence starts are capitalised. No state; any thread.
class TextNormalizer final {
 public:
  TextNormalizer() = delete;

  /// The finished text, which may be empty and neither begins nor ends with white space. Every input has one;
  /// each ill-formed UTF-8 sequence in it reads as U+FFFD. Time linear in the length.
  static std::string normalize(std::string_view text);

 private:
  /// `text`, which is well-formed, with a capital first letter in each sentence; nothing is lower-cased.
  static std::string capitalizeSentenceStarts(std::string_view text);
};

}  // namespace tavelo
