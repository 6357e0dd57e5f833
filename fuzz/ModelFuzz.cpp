#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "fuzz/Require.h"
#include "recognizer/model/ModelCheck.h"
#include "recognizer/model/OnnxFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavelo::recognition;
  const std::string bytes{reinterpret_cast<const char*>(data), size};
  std::istringstream container{bytes};
  const auto file = OnnxFile::read(container);
  if (file) {
    std::istringstream cut{bytes.substr(0, size - 1)};
    const auto shorter = OnnxFile::read(cut);
    tavelo::fuzz::require(!shorter || shorter->metadata.size() <= file->metadata.size(),
                          "a part has no more than all");
    for (const auto& [key, value] : file->metadata) (void)file->number(key);
  }
  std::istringstream table{bytes};
  (void)checkTokens(table, static_cast<long>(size % 64));
  return 0;
}
