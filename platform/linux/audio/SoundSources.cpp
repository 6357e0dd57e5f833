#include "platform/linux/audio/SoundSources.h"

#include <chrono>
#include <memory>
#include <system_error>
#include <utility>

#include <pulse/pulseaudio.h>

namespace tavelo::linuxdesktop {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds answerLimit{2};
constexpr int turnMicroseconds = 50'000;
constexpr const char* noServer = "Không kết nối được với dịch vụ âm thanh (PulseAudio hoặc PipeWire).";

/// One question, with its own connection. Everything runs on the thread that calls `ask`.
class Question final {
 public:
  SoundSources::Answer ask() {
    if (!loop_ || !context_) return {{}, noServer};
    pa_context_set_state_callback(
        context_.get(), [](pa_context*, void* self) { static_cast<Question*>(self)->contextChanged(); },
        this);
    if (pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
      return {{}, noServer};
    const auto deadline = Clock::now() + answerLimit;
    while (!isOver_ && Clock::now() < deadline) {
      if (pa_mainloop_prepare(loop_.get(), turnMicroseconds) < 0 || pa_mainloop_poll(loop_.get()) < 0 ||
          pa_mainloop_dispatch(loop_.get()) < 0)
        break;
    }
    if (!isAnswered_) return {{}, noServer};
    for (auto& each : answer_.sources) each.isDefault = each.name == default_;
    return std::move(answer_);
  }

 private:
  struct Release {
    void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
    void operator()(pa_context* context) const {
      pa_context_set_state_callback(context, nullptr, nullptr);
      pa_context_disconnect(context);
      pa_context_unref(context);
    }
  };

  void contextChanged() {
    const auto state = pa_context_get_state(context_.get());
    if (!PA_CONTEXT_IS_GOOD(state)) isOver_ = true;
    if (state != PA_CONTEXT_READY) return;
    // The server answers in the order of the questions.
    started(pa_context_get_server_info(
        context_.get(),
        [](pa_context*, const pa_server_info* server, void* self) {
          if (server != nullptr && server->default_source_name != nullptr)
            static_cast<Question*>(self)->default_ = server->default_source_name;
        },
        this));
    started(pa_context_get_source_info_list(
        context_.get(),
        [](pa_context*, const pa_source_info* source, int end, void* self) {
          static_cast<Question*>(self)->hear(source, end);
        },
        this));
  }

  void started(pa_operation* operation) {
    if (operation == nullptr) {
      isOver_ = true;
    } else {
      pa_operation_unref(operation);
    }
  }

  void hear(const pa_source_info* source, int end) {
    if (end != 0) {
      isOver_ = true;
      isAnswered_ = end > 0;
    } else if (source->monitor_of_sink == PA_INVALID_INDEX) {
      const auto* description = source->description != nullptr ? source->description : source->name;
      answer_.sources.push_back({.name = source->name, .description = description});
    }
  }

  const std::unique_ptr<pa_mainloop, Release> loop_{pa_mainloop_new()};
  const std::unique_ptr<pa_context, Release> context_{
      loop_ ? pa_context_new(pa_mainloop_get_api(loop_.get()), "Tavelo") : nullptr};
  SoundSources::Answer answer_;
  std::string default_;
  bool isOver_ = false;
  bool isAnswered_ = false;
};

}  // namespace

SoundSources::~SoundSources() {
  if (thread_.joinable()) thread_.join();
}

void SoundSources::ask(std::function<void(const Answer&)> answer) {
  if (thread_.joinable()) return;
  auto deliver = lifetime_.guard([this, answer = std::move(answer)](const Answer& found) {
    thread_.join();
    answer(found);
  });
  try {
    thread_ = std::thread([&queue = mainQueue_, deliver = std::move(deliver)]() mutable {
      queue.async([deliver = std::move(deliver), found = Question().ask()]() mutable { deliver(found); });
    });
  } catch (const std::system_error&) {
    // No thread: the next question may find one.
  }
}

}  // namespace tavelo::linuxdesktop
