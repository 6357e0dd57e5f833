#include "tests/platform/recognizer/ReferenceDecoding.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <dlfcn.h>
#include <nlohmann/json.hpp>

namespace tavelo {
namespace {

static_assert(std::endian::native == std::endian::little, "WAV samples are read as they are");

template <class Value>
Value valueAt(const std::string& bytes, std::size_t offset) {
  Value value{};
  if (offset + sizeof value > bytes.size()) throw std::runtime_error{"WAV file cut short"};
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

template <class Function>
Function* symbol(void* library, const char* name) {
  auto* function = reinterpret_cast<Function*>(dlsym(library, name));
  if (function == nullptr) throw std::runtime_error{std::string{"the library has no "} + name};
  return function;
}

std::string joined(const std::string& finished, const std::string& more) {
  return finished.empty() || more.empty() ? finished + more : finished + " " + more;
}

std::string member(const char* json, const char* name) {
  return nlohmann::json::parse(json).value(name, std::string{});
}

}  // namespace

WavSound readWav(const std::string& file) {
  std::ifstream stream{file, std::ios::binary};
  if (!stream) throw std::runtime_error{file + ": cannot be read"};
  const std::string bytes{std::istreambuf_iterator<char>{stream}, {}};
  if (bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0)
    throw std::runtime_error{file + ": not a WAV file"};
  WavSound sound;
  for (std::size_t chunk = 12;; chunk += 8 + valueAt<std::uint32_t>(bytes, chunk + 4)) {
    const std::size_t size = valueAt<std::uint32_t>(bytes, chunk + 4);
    if (bytes.compare(chunk, 4, "fmt ") == 0) {
      const bool mono16 = valueAt<std::uint16_t>(bytes, chunk + 8) == 1 &&
                          valueAt<std::uint16_t>(bytes, chunk + 10) == 1 &&
                          valueAt<std::uint16_t>(bytes, chunk + 22) == 16;
      if (!mono16) throw std::runtime_error{file + ": not 16-bit mono"};
      sound.sampleRate = valueAt<std::uint32_t>(bytes, chunk + 12);
    } else if (bytes.compare(chunk, 4, "data") == 0) {
      for (std::size_t i = 0; i + 1 < size; i += 2)
        sound.samples.push_back(valueAt<std::int16_t>(bytes, chunk + 8 + i));
      return sound;
    }
  }
}

std::vector<std::vector<std::int16_t>> chunksOf(const WavSound& sound, std::size_t chunkFrames,
                                                double silenceSeconds) {
  std::vector<std::int16_t> stream = sound.samples;
  stream.resize(stream.size() + static_cast<std::size_t>(std::llround(silenceSeconds * sound.sampleRate)));
  stream.resize((stream.size() + chunkFrames - 1) / chunkFrames * chunkFrames);
  std::vector<std::vector<std::int16_t>> chunks;
  for (auto from = stream.begin(); from != stream.end(); from += static_cast<std::ptrdiff_t>(chunkFrames))
    chunks.emplace_back(from, from + static_cast<std::ptrdiff_t>(chunkFrames));
  return chunks;
}

std::vector<std::string> referenceTranscripts(const std::string& library, const std::string& model,
                                              double sampleRate,
                                              const std::vector<std::vector<std::int16_t>>& chunks) {
  void* vosk = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (vosk == nullptr) throw std::runtime_error{dlerror()};
  symbol<void(int)>(vosk, "vosk_set_log_level")(-1);
  void* loaded = symbol<void*(const char*)>(vosk, "vosk_model_new")(model.c_str());
  if (loaded == nullptr) throw std::runtime_error{model + ": no model"};
  void* recognizer =
      symbol<void*(void*, float)>(vosk, "vosk_recognizer_new")(loaded, static_cast<float>(sampleRate));
  if (recognizer == nullptr) throw std::runtime_error{"no recogniser"};
  auto* accept = symbol<int(void*, const char*, int)>(vosk, "vosk_recognizer_accept_waveform");
  auto* partial = symbol<const char*(void*)>(vosk, "vosk_recognizer_partial_result");

  std::string finished;
  std::vector<std::string> transcripts;
  for (const auto& chunk : chunks) {
    const int answer = accept(recognizer, reinterpret_cast<const char*>(chunk.data()),
                              static_cast<int>(chunk.size() * sizeof(std::int16_t)));
    if (answer < 0) throw std::runtime_error{"the recogniser failed"};
    if (answer > 0)
      finished = joined(
          finished, member(symbol<const char*(void*)>(vosk, "vosk_recognizer_result")(recognizer), "text"));
    transcripts.push_back(answer > 0 ? finished : joined(finished, member(partial(recognizer), "partial")));
  }
  auto* final = symbol<const char*(void*)>(vosk, "vosk_recognizer_final_result");
  transcripts.push_back(joined(finished, member(final(recognizer), "text")));
  symbol<void(void*)>(vosk, "vosk_recognizer_free")(recognizer);
  symbol<void(void*)>(vosk, "vosk_model_free")(loaded);
  dlclose(vosk);
  return transcripts;
}

}  // namespace tavelo
