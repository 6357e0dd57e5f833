#pragma once

#include <cstdint>
#include <functional>

#include "platform/Time.h"
#include "platform/simulated/SimulatedLoop.h"

namespace tavelo::simulated {

/// What the person does with a permission prompt.
struct PromptAnswer {
  enum class When : std::uint8_t { later, never };

  bool granted = true;
  When when = When::later;
  /// From the request to the answer, which never comes inside the requesting call.
  platform::Seconds after{0};

  /// Runs `deliver` on another thread, as real platforms do, if and when the person answers. Main thread.
  void pass(SimulatedLoop& loop, std::function<void()> deliver) const {
    if (when == When::later) loop.foreignAfter(after, std::move(deliver));
  }
};

}  // namespace tavelo::simulated
