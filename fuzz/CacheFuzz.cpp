#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/Require.h"
#include "text/TranscriptCacheFormat.h"
#include "unicode/Unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavelo;
  const TranscriptCacheDecoder decoder;
  const auto entries = decoder.decode({reinterpret_cast<const char*>(data), size});
  if (!entries) return 0;
  const std::string json = TranscriptCacheEncoder().encode(*entries);
  fuzz::require(unicode::isWellFormed(json), "the file is well-formed");
  fuzz::require(decoder.decode(json) == entries, "what is written reads back the same");
  return 0;
}
