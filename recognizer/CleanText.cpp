#include "recognizer/CleanText.h"

#include "unicode/PlainText.h"
#include "unicode/Unicode.h"

namespace tavelo::recognition {

std::string cleaned(std::string_view text) {
  return unicode::inComposedForm(unicode::trimmed(unicode::withoutControls(text)));
}

}  // namespace tavelo::recognition
