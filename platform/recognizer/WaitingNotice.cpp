#include "platform/recognizer/WaitingNotice.h"

#include <utility>

namespace tavelo::recognizer {
namespace {

constexpr platform::Seconds lookAgain{0.2};

constexpr const char* waiting = "Tavelo đang chuẩn bị";
constexpr const char* keepSpeaking =
    "Bộ nhận diện giọng nói đang khởi động. Hãy cứ nói tiếp, đừng kết thúc vội: lời bạn nói được giữ lại.";
constexpr const char* notHeard = "Tavelo chưa nghe được";
constexpr const char* notReady =
    "Bộ nhận diện giọng nói chưa sẵn sàng nên chưa nghe được gì. Hãy thử lại sau.";
constexpr const char* ready = "Tavelo đã sẵn sàng";
constexpr const char* failed =
    "Bộ nhận diện giọng nói không khởi động được. Lệnh “tavelo doctor” cho biết thêm.";
constexpr const char* speakAgain = "Bộ nhận diện giọng nói đã khởi động xong. Hãy nói lại.";

bool isPending(const std::shared_ptr<const Outcome>& engine) {
  return engine && engine->state() == Outcome::State::pending;
}

}  // namespace

void WaitingNotice::begin(const std::shared_ptr<const Outcome>& engine,
                          const std::shared_ptr<RecognitionTask>& task) {
  if (!isPending(engine)) return;
  // What is spoken now is kept, so nobody has to say it again.
  if (engine == engine_.lock()) missed_ = false;
  mainQueue_.asyncAfter(
      delay, lifetime_.guard([this, weak = std::weak_ptr(engine), of = std::weak_ptr(task)] {
        const auto asked = weak.lock();
        const auto dictation = of.lock();
        if (!isPending(asked) || (asked == engine_.lock() && told_) || !dictation || dictation->isOver())
          return;
        watch(asked);
        told_ = true;
        shown_ = notifications_.show(waiting, keepSpeaking);
      }));
}

void WaitingNotice::miss(const std::shared_ptr<const Outcome>& engine) {
  if (engine != engine_.lock()) watch(engine);
  shown_.reset();
  told_ = false;
  missed_ = true;
  notifications_.post(notHeard, notReady);
}

void WaitingNotice::watch(const std::shared_ptr<const Outcome>& engine) {
  const bool looks = isPending(engine_.lock());
  engine_ = engine;
  told_ = false;
  missed_ = false;
  shown_.reset();
  if (!looks) look();
}

void WaitingNotice::look() {
  const auto engine = engine_.lock();
  if (isPending(engine)) return mainQueue_.asyncAfter(lookAgain, lifetime_.guard([this] { look(); }));
  shown_.reset();
  if (!std::exchange(missed_, false) || !engine) return;
  if (engine->state() == Outcome::State::succeeded) return notifications_.post(ready, speakAgain);
  notifications_.post(notHeard, failed);
}

}  // namespace tavelo::recognizer
