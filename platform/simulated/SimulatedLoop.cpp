#include "platform/simulated/SimulatedLoop.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <string>
#include <utility>

#include "platform/simulated/Rules.h"

namespace tavelo::simulated {
namespace {

/// Longer than any delay of the program, and short enough not to overflow the clock.
constexpr platform::Seconds longestDelay{1e9};

/// More blocks than this at one instant of virtual time mean that they post each other endlessly.
constexpr std::uint64_t mostBlocksOfInstant = 1'000'000;

platform::Uptime clamped(platform::Seconds delay) {
  if (!(delay > platform::Seconds{0})) return platform::Uptime{0};
  return platform::toUptime(std::min(delay, longestDelay));
}

void run(const platform::MainQueue::Block& block) {
  try {
    block();
  } catch (const std::exception& error) {
    rules::broken(std::string{"a block of the main queue threw: "} + error.what());
  } catch (...) {
    rules::broken("a block of the main queue threw");
  }
}

}  // namespace

SimulatedLoop::SimulatedLoop(platform::WallTime wallTimeAtStart)
    : mainThread_(std::this_thread::get_id()), wallTimeAtStart_(wallTimeAtStart) {}

SimulatedLoop::~SimulatedLoop() = default;

void SimulatedLoop::async(Block block) { asyncAt(uptime(), std::move(block)); }

void SimulatedLoop::asyncAfter(platform::Seconds delay, Block block) {
  asyncAt(uptime() + clamped(delay), std::move(block));
}

bool SimulatedLoop::isMainThread() const { return std::this_thread::get_id() == mainThread_; }

platform::WallTime SimulatedLoop::now() const {
  return wallTimeAtStart_ + std::chrono::duration_cast<platform::WallTime::duration>(uptime());
}

void SimulatedLoop::asyncAt(platform::Uptime deadline, Block block) {
  const std::lock_guard lock{mutex_};
  queue_.insert(Entry{std::max(deadline, uptime()), nextNumber_++, std::move(block)});
  posted();
}

void SimulatedLoop::foreignAfter(platform::Seconds delay, Block block) {
  asyncAfter(delay, [block = std::move(block)] { std::thread{[&block] { run(block); }}.join(); });
}

void SimulatedLoop::advance(platform::Seconds interval) { runUntil(uptime() + clamped(interval)); }

void SimulatedLoop::runUntil(platform::Uptime deadline) {
  rules::requireMainThread(*this, "MainQueue::runUntil");
  if (deadline < uptime()) return;
  while (runNext(deadline)) {
  }
}

bool SimulatedLoop::runUntil(const std::function<bool()>& condition, platform::Seconds bound) {
  rules::requireMainThread(*this, "SimulatedLoop::runUntil");
  const platform::Uptime deadline = uptime() + clamped(bound);
  bool holds = condition();
  while (!holds && runNext(deadline)) holds = condition();
  return holds || condition();
}

void SimulatedLoop::discardBlocks() {
  std::set<Entry> dropped;
  const std::lock_guard lock{mutex_};
  dropped.swap(queue_);
}

bool SimulatedLoop::runNext(platform::Uptime deadline) {
  const std::optional<Entry> entry = takeDue(deadline);
  if (!entry) return false;
  countBlockOfInstant();
  run(entry->block);
  return true;
}

std::optional<SimulatedLoop::Entry> SimulatedLoop::takeDue(platform::Uptime deadline) {
  std::unique_lock lock{mutex_};
  while (true) {
    const platform::Uptime now = uptime();
    const platform::Uptime next = queue_.empty() ? platform::Uptime::max() : queue_.begin()->deadline;
    if (next <= std::min(now, deadline)) return std::move(queue_.extract(queue_.begin()).value());
    if (now >= deadline) return std::nullopt;
    waitUntil(lock, std::min(next, deadline));
  }
}

void SimulatedLoop::countBlockOfInstant() {
  const platform::Uptime now = uptime();
  blocksOfInstant_ = now == lastInstant_ ? blocksOfInstant_ + 1 : 1;
  lastInstant_ = now;
  if (blocksOfInstant_ > mostBlocksOfInstant) rules::broken("blocks post each other without end");
}

}  // namespace tavelo::simulated
