#include "platform/KeyWatchers.h"

#include <utility>

namespace tavelo::platform {

/// What is called. It may outlive its owner for as long as the call into it lasts.
struct KeyWatchers::Watcher {
  KeyEventMask mask;
  Handler handler;
  bool isOwned = true;
  bool isEnabled = true;
  bool hasSource = false;
};

class KeyWatchers::Tap final : public EventTap {
 public:
  explicit Tap(std::shared_ptr<Watcher> watcher) : watcher_(std::move(watcher)) {}
  ~Tap() override { watcher_->isOwned = false; }

  void enable(bool on) override { watcher_->isEnabled = on; }
  const std::shared_ptr<Watcher>& watcher() const { return watcher_; }

 private:
  const std::shared_ptr<Watcher> watcher_;
};

class KeyWatchers::Source final : public RunLoopSource {
 public:
  explicit Source(std::shared_ptr<Watcher> watcher) : watcher_(std::move(watcher)) {
    watcher_->hasSource = true;
  }
  ~Source() override { watcher_->hasSource = false; }

 private:
  const std::shared_ptr<Watcher> watcher_;
};

class KeyWatchers::Monitor final : public EventMonitor {
 public:
  explicit Monitor(std::shared_ptr<Watcher> watcher) : watcher_(std::move(watcher)) {}
  ~Monitor() override { watcher_->isOwned = false; }

 private:
  const std::shared_ptr<Watcher> watcher_;
};

std::unique_ptr<EventTap> KeyWatchers::addTap(KeyEventMask mask, Handler callback) {
  auto watcher = std::make_shared<Watcher>(Watcher{.mask = mask, .handler = std::move(callback)});
  taps_.push_back(watcher);
  return std::make_unique<Tap>(std::move(watcher));
}

std::unique_ptr<RunLoopSource> KeyWatchers::addSource(EventTap& tap) {
  const auto* own = dynamic_cast<Tap*>(&tap);
  return own != nullptr ? std::make_unique<Source>(own->watcher()) : nullptr;
}

std::unique_ptr<EventMonitor> KeyWatchers::addMonitor(KeyEventMask mask, Handler handler) {
  auto watcher =
      std::make_shared<Watcher>(Watcher{.mask = mask, .handler = std::move(handler), .hasSource = true});
  monitors_.push_back(watcher);
  return std::make_unique<Monitor>(std::move(watcher));
}

void KeyWatchers::deliver(const KeyboardEvent& event, bool forOwnWindow) {
  call(taps_, event);
  if (!forOwnWindow) call(monitors_, event);
}

void KeyWatchers::call(std::vector<std::weak_ptr<Watcher>>& watchers, const KeyboardEvent& event) {
  std::erase_if(watchers, [](const auto& each) { return each.expired(); });
  for (const auto& each : std::vector(watchers)) {
    const auto watcher = each.lock();
    if (watcher && watcher->isOwned && watcher->isEnabled && watcher->hasSource &&
        (watcher->mask & maskOf(event.type)) != 0)
      watcher->handler(event);
  }
}

}  // namespace tavelo::platform
