#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "bench/StepwiseNormalizer.h"
#include "fuzz/Require.h"
#include "text/PreviewText.h"
#include "text/TextNormalizer.h"
#include "unicode/Unicode.h"

namespace {

using namespace tavelo;

void requireCleanSpacing(std::string_view text) {
  for (const std::string_view pair : {"  ", " ,", " .", " ;", " :", " ?", " !", " \n", "\n ", "\t"}) {
    fuzz::require(text.find(pair) == std::string_view::npos, "spacing is clean");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static bench::StepwiseNormalizer stepwise(bench::StepwiseNormalizer::Search::letters);
  const std::string_view raw(reinterpret_cast<const char*>(data), size);
  const std::string finished = TextNormalizer::normalize(raw);
  fuzz::require(unicode::isWellFormed(finished), "finished text is well-formed");
  fuzz::require(unicode::trimmed(finished) == finished, "finished text is trimmed");
  requireCleanSpacing(finished);
  fuzz::require(finished == stepwise.normalize(raw), "one pass gives the same text as phrase after phrase");

  const std::string preview = previewText(raw);
  fuzz::require(!preview.empty() && unicode::isWellFormed(preview), "preview shows something well-formed");
  return 0;
}
