#include "platform/linux/audio/PulseRecording.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

namespace tavelo::linuxdesktop {
namespace {

constexpr const char* noServer = "Không kết nối được với dịch vụ âm thanh (PulseAudio hoặc PipeWire).";
constexpr const char* noDevice = "Không tìm thấy thiết bị thu âm nào.";
constexpr const char* refused = "Dịch vụ âm thanh từ chối ghi âm.";

constexpr pa_sample_spec sampleSpec{
    .format = PA_SAMPLE_S16NE, .rate = 16000, .channels = PulseRecording::format.channelCount};
constexpr std::uint32_t pieceFrames = sampleSpec.rate / 50;
constexpr auto serverDecides = static_cast<std::uint32_t>(-1);

}  // namespace

void PulseRecording::Release::operator()(pa_context* context) const {
  pa_context_set_state_callback(context, nullptr, nullptr);
  pa_context_disconnect(context);
  pa_context_unref(context);
}

void PulseRecording::Release::operator()(pa_stream* stream) const {
  pa_stream_set_state_callback(stream, nullptr, nullptr);
  pa_stream_set_read_callback(stream, nullptr, nullptr);
  pa_stream_disconnect(stream);
  pa_stream_unref(stream);
}

PulseRecording::PulseRecording(pa_mainloop_api& loop, std::string source,
                               std::function<void(const platform::AudioBuffer&)> heard)
    : wanted_(std::move(source)), heard_(std::move(heard)), context_(pa_context_new(&loop, "Tavelo")) {
  if (!context_) {
    fail(noServer);
    return;
  }
  pa_context_set_state_callback(
      context_.get(), [](pa_context*, void* self) { static_cast<PulseRecording*>(self)->contextChanged(); },
      this);
  if (pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0) fail(noServer);
}

PulseRecording::~PulseRecording() = default;

void PulseRecording::contextChanged() {
  const auto state = pa_context_get_state(context_.get());
  if (!PA_CONTEXT_IS_GOOD(state)) return fail(noServer);
  if (state != PA_CONTEXT_READY) return;
  auto* operation = pa_context_get_source_info_list(
      context_.get(),
      [](pa_context*, const pa_source_info* source, int end, void* self) {
        static_cast<PulseRecording*>(self)->lookForDevice(source, end);
      },
      this);
  if (operation == nullptr) return failAsServerSays();
  pa_operation_unref(operation);
}

/// A machine without a microphone still offers a recording of what its own loudspeakers play. Recording that
/// would lose the user's words without a message, unless the user asks for it by name.
void PulseRecording::lookForDevice(const pa_source_info* source, int end) {
  if (state_ != State::opening || stream_) return;
  if (end < 0) return failAsServerSays();
  if (end == 0) {
    wantedSeen_ = wantedSeen_ || wanted_ == source->name;
    deviceSeen_ = deviceSeen_ || wantedSeen_ || source->monitor_of_sink == PA_INVALID_INDEX;
  } else if (deviceSeen_) {
    openStream();
  } else {
    fail(noDevice);
  }
}

void PulseRecording::openStream() {
  stream_.reset(pa_stream_new(context_.get(), "Tavelo", &sampleSpec, nullptr));
  if (!stream_) return failAsServerSays();
  pa_stream_set_state_callback(
      stream_.get(), [](pa_stream*, void* self) { static_cast<PulseRecording*>(self)->streamChanged(); },
      this);
  pa_stream_set_read_callback(
      stream_.get(), [](pa_stream*, std::size_t, void* self) { static_cast<PulseRecording*>(self)->read(); },
      this);
  const pa_buffer_attr sizes{.maxlength = serverDecides,
                             .tlength = serverDecides,
                             .prebuf = serverDecides,
                             .minreq = serverDecides,
                             .fragsize = pieceFrames * sizeof(std::int16_t)};
  if (pa_stream_connect_record(stream_.get(), wantedSeen_ ? wanted_.c_str() : nullptr, &sizes,
                               PA_STREAM_ADJUST_LATENCY) < 0)
    failAsServerSays();
}

void PulseRecording::streamChanged() {
  const auto state = pa_stream_get_state(stream_.get());
  if (!PA_STREAM_IS_GOOD(state)) return failAsServerSays();
  if (state == PA_STREAM_READY && state_ == State::opening) state_ = State::recording;
}

std::string PulseRecording::source() const {
  const char* name = state_ == State::recording ? pa_stream_get_device_name(stream_.get()) : nullptr;
  return name != nullptr ? name : "";
}

void PulseRecording::read() {
  const void* data = nullptr;
  std::size_t bytes = 0;
  auto& samples = buffer_.samples;
  while (pa_stream_peek(stream_.get(), &data, &bytes) == 0 && bytes > 0) {
    const auto before = samples.size();
    // A piece without data is a gap; it becomes silence of the same length.
    samples.resize(before + bytes / sizeof(std::int16_t));
    if (data != nullptr)
      std::memcpy(samples.data() + before, data, (samples.size() - before) * sizeof(std::int16_t));
    pa_stream_drop(stream_.get());
    // Some devices deliver far smaller pieces than we asked for.
    if (samples.size() < pieceFrames) continue;
    heard_(buffer_);
    samples.clear();
  }
}

void PulseRecording::fail(const char* reason) {
  if (state_ == State::failed) return;
  state_ = State::failed;
  error_.localizedDescription = reason;
}

void PulseRecording::failAsServerSays() {
  fail(pa_context_errno(context_.get()) == PA_ERR_NOENTITY ? noDevice : refused);
}

}  // namespace tavelo::linuxdesktop
