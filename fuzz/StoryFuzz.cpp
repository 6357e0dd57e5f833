#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "fuzz/Require.h"
#include "rehearsal/Story.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavelo;
  const auto read = rehearsal::parseStory({reinterpret_cast<const char*>(data), size});
  if (const auto* failure = std::get_if<std::string>(&read)) {
    fuzz::require(!failure->empty(), "a refusal says why");
    fuzz::require(failure->find('\n') == std::string::npos, "a refusal is one line");
  }
  return 0;
}
