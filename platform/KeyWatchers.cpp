#include "platform/KeyWatchers.h"

#include <algorithm>
#include <utility>

namespace tavelo::platform {

/// A tap or monitor. A running call keeps it alive after its owner has dropped it.
struct KeyWatchers::Watcher {
  std::shared_ptr<const Checks> checks;
  KeyEventMask mask;
  Handler handler;
  bool isOwned = true;
  bool isEnabled = true;
  bool hasSource = false;

  bool canBeCalled() const { return isOwned && isEnabled && hasSource; }
};

class KeyWatchers::Tap final : public EventTap {
 public:
  explicit Tap(std::shared_ptr<Watcher> watcher) : watcher_(std::move(watcher)) {}
  ~Tap() override {
    watcher_->checks->onUse("dropping an event tap");
    if (watcher_->hasSource)
      watcher_->checks->onMistake("an event tap was dropped before its run-loop source");
    watcher_->isOwned = false;
  }

  void enable(bool on) override {
    watcher_->checks->onUse("EventTap::enable");
    watcher_->isEnabled = on;
  }
  const std::shared_ptr<Watcher>& watcher() const { return watcher_; }

 private:
  const std::shared_ptr<Watcher> watcher_;
};

class KeyWatchers::Source final : public RunLoopSource {
 public:
  explicit Source(std::shared_ptr<Watcher> watcher) : watcher_(std::move(watcher)) {
    if (watcher_->hasSource) watcher_->checks->onMistake("a second run-loop source for an event tap");
    watcher_->hasSource = true;
  }
  ~Source() override {
    watcher_->checks->onUse("dropping a run-loop source");
    watcher_->hasSource = false;
  }

 private:
  const std::shared_ptr<Watcher> watcher_;
};

class KeyWatchers::Monitor final : public EventMonitor {
 public:
  explicit Monitor(std::shared_ptr<Watcher> watcher) : watcher_(std::move(watcher)) {
    watcher_->hasSource = true;
  }
  ~Monitor() override {
    watcher_->checks->onUse("dropping an event monitor");
    watcher_->isOwned = false;
  }

 private:
  const std::shared_ptr<Watcher> watcher_;
};

KeyWatchers::KeyWatchers() : KeyWatchers(Checks{}) {}

KeyWatchers::KeyWatchers(Checks checks) : checks_(std::make_shared<const Checks>(std::move(checks))) {}

std::shared_ptr<KeyWatchers::Watcher> KeyWatchers::add(Watchers& watchers, KeyEventMask mask,
                                                       Handler handler) {
  auto watcher =
      std::make_shared<Watcher>(Watcher{.checks = checks_, .mask = mask, .handler = std::move(handler)});
  watchers.push_back(watcher);
  return watcher;
}

std::unique_ptr<EventTap> KeyWatchers::addTap(KeyEventMask mask, Handler callback) {
  return std::make_unique<Tap>(add(taps_, mask, std::move(callback)));
}

std::unique_ptr<RunLoopSource> KeyWatchers::addSource(EventTap& tap) {
  const auto* own = dynamic_cast<Tap*>(&tap);
  return own != nullptr ? std::make_unique<Source>(own->watcher()) : nullptr;
}

std::unique_ptr<EventMonitor> KeyWatchers::addMonitor(KeyEventMask mask, Handler handler) {
  return std::make_unique<Monitor>(add(monitors_, mask, std::move(handler)));
}

void KeyWatchers::deliver(const KeyboardEvent& event, bool forOwnWindow) {
  call(taps_, event);
  if (!forOwnWindow) call(monitors_, event);
}

void KeyWatchers::disableTaps(const KeyboardEvent& notice) {
  for (const auto& tap : existing(taps_)) {
    const bool tell = tap->canBeCalled();
    tap->isEnabled = false;
    if (tell) tap->handler(notice);
  }
}

std::size_t KeyWatchers::tapCount() const { return existing(taps_).size(); }

std::size_t KeyWatchers::sourceCount() const {
  const auto taps = existing(taps_);
  return static_cast<std::size_t>(
      std::count_if(taps.begin(), taps.end(), [](const auto& tap) { return tap->hasSource; }));
}

std::size_t KeyWatchers::monitorCount() const { return existing(monitors_).size(); }

std::vector<std::shared_ptr<KeyWatchers::Watcher>> KeyWatchers::existing(const Watchers& watchers) {
  std::vector<std::shared_ptr<Watcher>> result;
  for (const auto& each : watchers) {
    if (auto watcher = each.lock(); watcher && watcher->isOwned) result.push_back(std::move(watcher));
  }
  return result;
}

void KeyWatchers::call(Watchers& watchers, const KeyboardEvent& event) {
  std::erase_if(watchers, [](const auto& each) { return each.expired(); });
  // A notice has no bit in any mask.
  const bool isForAll = event.type == KeyEventType::holdInterrupted;
  for (const auto& watcher : existing(watchers)) {
    if (watcher->canBeCalled() && (isForAll || (watcher->mask & maskOf(event.type)) != 0))
      watcher->handler(event);
  }
}

}  // namespace tavelo::platform
