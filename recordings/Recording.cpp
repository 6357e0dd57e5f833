#include "recordings/Recording.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include <sndfile.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"
#include "recordings/Resampler.h"

namespace tavelo::recordings {
namespace {

using language::say;
namespace words = language::words;

/// No speech lies outside these.
constexpr int lowestRate = 1000;
constexpr int highestRate = 768'000;
/// A piece is half a second, and bounded whatever the header says of rate and channels.
constexpr sf_count_t mostValues = sf_count_t{1} << 18;

/// The library's words as a clause: "No such file or directory". It knows English only.
std::string clause(std::string_view text) {
  for (const std::string_view start : {"System error : ", "Error : "})
    if (text.starts_with(start)) text.remove_prefix(start.size());
  while (text.ends_with('.')) text.remove_suffix(1);
  const std::string said{text};
  const bool isKnown =
      language::current() == language::Language::english || language::systemError(said) != said;
  return isKnown ? language::systemError(said) : say(words::brokenSoundFile);
}

std::int16_t sampleOf(float value) {
  constexpr float scale = 32768;
  const float scaled = std::round(value * scale);
  return static_cast<std::int16_t>(std::clamp(scaled, -scale, scale - 1));
}

/// The mean of a frame's channels. What is no number is silence.
float mixed(std::span<const float> frame) {
  const float mean = std::accumulate(frame.begin(), frame.end(), 0.0F) / static_cast<float>(frame.size());
  return std::isfinite(mean) ? mean : 0;
}

}  // namespace

struct Recording::Reader {
  std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file{nullptr, &sf_close};
  SF_INFO format{};
  /// Absent if the file has our rate.
  std::optional<Resampler> resampler;
  std::vector<float> values;
  std::string failure;
  bool atEnd = false;

  std::size_t channels() const { return static_cast<std::size_t>(format.channels); }

  /// The next frames, mixed down.
  std::vector<float> frames() {
    const auto wanted = std::clamp<sf_count_t>(format.samplerate / 2, 1, mostValues / format.channels);
    values.resize(static_cast<std::size_t>(wanted) * channels());
    const auto count = std::clamp<sf_count_t>(sf_readf_float(file.get(), values.data(), wanted), 0, wanted);
    if (count < wanted) {
      atEnd = true;
      if (sf_error(file.get()) != SF_ERR_NO_ERROR) failure = clause(sf_strerror(file.get()));
    }
    std::vector<float> mono(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < mono.size(); ++i)
      mono[i] = mixed(std::span{values}.subspan(i * channels(), channels()));
    return mono;
  }
};

Recording::Opening Recording::open(const std::filesystem::path& file) {
  const auto refuse = [](std::string why) { return Opening{nullptr, std::move(why)}; };
  auto reader = std::make_unique<Reader>();
  auto& format = reader->format;
  reader->file.reset(sf_open(file.c_str(), SFM_READ, &format));
  if (!reader->file) {
    return refuse(sf_error(nullptr) == SF_ERR_UNRECOGNISED_FORMAT ? say(words::noSoundFile)
                                                                  : clause(sf_strerror(nullptr)));
  }
  if (format.samplerate < lowestRate || format.samplerate > highestRate)
    return refuse(say(words::strangeRate, {std::to_string(format.samplerate)}));
  if (format.channels < 1 || format.channels > mostValues)
    return refuse(say(words::strangeChannels, {std::to_string(format.channels)}));
  if (format.frames <= 0) return refuse(say(words::noSoundInIt));
  if (format.samplerate != sampleRate)
    reader->resampler.emplace(static_cast<double>(sampleRate) / format.samplerate);
  return {std::unique_ptr<Recording>{new Recording{std::move(reader)}}, {}};
}

Recording::Recording(std::unique_ptr<Reader> reader) : reader_(std::move(reader)) {}

Recording::~Recording() = default;

platform::Seconds Recording::duration() const {
  return platform::Seconds{static_cast<double>(reader_->format.frames) / reader_->format.samplerate};
}

const std::string& Recording::failure() const { return reader_->failure; }

std::vector<std::int16_t> Recording::read() {
  std::vector<float> sound;
  while (sound.empty() && !reader_->atEnd) {
    auto frames = reader_->frames();
    if (reader_->resampler) {
      reader_->resampler->process(frames, reader_->atEnd, sound);
    } else {
      sound = std::move(frames);
    }
  }
  std::vector<std::int16_t> samples(sound.size());
  std::ranges::transform(sound, samples.begin(), sampleOf);
  return samples;
}

}  // namespace tavelo::recordings
