#pragma once

#include <array>
#include <string_view>

namespace tavelo {

/// A punctuation mark as it is spoken, and the text written for it.
struct SpokenPhraseReplacement {
  std::string_view phrase;
  std::string_view replacement;
};

/// In the order in which they are applied: a phrase comes before every shorter one that it contains. Phrases
/// consist of letters and single spaces. Replacements have neither, so none can become part of a phrase.
inline constexpr std::array<SpokenPhraseReplacement, 12> spokenPhraseReplacements{{
    {"chấm xuống dòng", ".\n"},
    {"xuống dòng", "\n"},
    {"dòng mới", "\n"},
    {"dấu chấm hỏi", "?"},
    {"dấu chấm than", "!"},
    {"dấu chấm phẩy", ";"},
    {"dấu chấm", "."},
    {"dấu phẩy", ","},
    {"dấu hai chấm", ":"},
    {"mở ngoặc", "("},
    {"đóng ngoặc", ")"},
    {"gạch ngang", "-"},
}};

}  // namespace tavelo
