#include "recordings/Resampler.h"

#include <array>
#include <new>
#include <stdexcept>

namespace tavelo::recordings {
namespace {

// Keeps what lies below 7.2 kHz at 16 kHz.
constexpr int quality = SRC_SINC_MEDIUM_QUALITY;

/// The library refuses null, also when no input is left.
constexpr float nothing = 0;

}  // namespace

Resampler::Resampler(double ratio) : ratio_(ratio), state_(src_new(quality, 1, nullptr), &src_delete) {
  if (!state_) throw std::bad_alloc{};
}

void Resampler::process(std::span<const float> in, bool last, std::vector<float>& out) {
  std::array<float, 4096> made{};
  while (true) {
    SRC_DATA data{};
    data.data_in = in.empty() ? &nothing : in.data();
    data.input_frames = static_cast<long>(in.size());
    data.data_out = made.data();
    data.output_frames = static_cast<long>(made.size());
    data.src_ratio = ratio_;
    data.end_of_input = last ? 1 : 0;
    if (const int error = src_process(state_.get(), &data); error != 0)
      throw std::logic_error{src_strerror(error)};
    out.insert(out.end(), made.begin(), made.begin() + data.output_frames_gen);
    in = in.subspan(static_cast<std::size_t>(data.input_frames_used));
    if (data.output_frames_gen == 0 && (in.empty() || data.input_frames_used == 0)) return;
  }
}

}  // namespace tavelo::recordings
