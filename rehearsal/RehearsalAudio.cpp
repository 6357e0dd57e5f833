#include "rehearsal/RehearsalAudio.h"

#include <utility>

#include "platform/simulated/WavFile.h"

namespace tavelo::rehearsal {

std::variant<std::vector<std::int16_t>, std::string> parseSamples(std::string_view wav) {
  auto file = simulated::WavFile::parse(wav);
  if (file.error) return *file.error;
  if (file.samples.empty()) return "there is no sound in it";
  return std::move(file.samples);
}

}  // namespace tavelo::rehearsal
