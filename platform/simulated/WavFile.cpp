#include "platform/simulated/WavFile.h"

#include <cstddef>
#include <utility>

namespace tavelo::simulated {
namespace {

/// Reads a little-endian number of `size` bytes; the caller has checked the length.
std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = size; i > 0; --i) {
    value = value << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  }
  return value;
}

WavFile failed(std::string why) {
  WavFile file;
  file.error = std::move(why);
  return file;
}

/// Why we cannot play this format; absent if we can.
std::optional<std::string> objection(std::string_view format) {
  constexpr std::uint32_t pcm = 1;
  if (format.size() < 16) return "the format chunk is cut short";
  if (number(format, 0, 2) != pcm) return "not PCM";
  if (number(format, 2, 2) != 1) return "not one channel but " + std::to_string(number(format, 2, 2));
  if (number(format, 4, 4) != 16000) return "not 16000 Hz but " + std::to_string(number(format, 4, 4));
  if (number(format, 14, 2) != 16) return "not 16 bits a sample but " + std::to_string(number(format, 14, 2));
  return std::nullopt;
}

WavFile samplesOf(std::string_view data) {
  if (data.size() % 2 != 0) return failed("half a sample at the end");
  WavFile file;
  file.samples.reserve(data.size() / 2);
  for (std::size_t at = 0; at < data.size(); at += 2) {
    file.samples.push_back(static_cast<std::int16_t>(number(data, at, 2)));
  }
  return file;
}

}  // namespace

WavFile WavFile::parse(std::string_view bytes) {
  if (bytes.size() < 12 || !bytes.starts_with("RIFF") || bytes.substr(8, 4) != "WAVE") {
    return failed("not a WAV file");
  }
  bool formatSeen = false;
  for (std::size_t at = 12; at + 8 <= bytes.size();) {
    const std::string_view name = bytes.substr(at, 4);
    const std::size_t size = number(bytes, at + 4, 4);
    at += 8;
    if (size > bytes.size() - at) return failed("a chunk is cut short");
    const std::string_view chunk = bytes.substr(at, size);
    if (name == "fmt ") {
      if (auto why = objection(chunk)) return failed(std::move(*why));
      formatSeen = true;
    } else if (name == "data") {
      return formatSeen ? samplesOf(chunk) : failed("the sound comes before its format");
    }
    // A chunk of odd length is followed by a padding byte.
    at += size + size % 2;
  }
  return failed(formatSeen ? "no sound in it" : "no format in it");
}

}  // namespace tavelo::simulated
