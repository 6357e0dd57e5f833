#include "commands/CommandLoopWiring.h"

#include "platform/simulated/RealTimeLoop.h"

namespace tavelo {

// Every build has this loop, and it needs no desktop.
CommandLoop::CommandLoop() : loop_(std::make_unique<simulated::RealTimeLoop>()) {}

CommandLoop::~CommandLoop() = default;

platform::MainQueue& CommandLoop::mainQueue() { return *loop_; }

void CommandLoop::runUntil(const std::function<bool()>& condition) {
  constexpr platform::Seconds aDay{86'400};
  while (!loop_->runUntil(condition, aDay)) {
  }
}

}  // namespace tavelo
