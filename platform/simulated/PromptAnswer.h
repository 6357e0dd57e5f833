#pragma once

#include <cstdint>
#include <functional>

#include "platform/Time.h"
#include "platform/simulated/SimulatedLoop.h"

namespace tavelo::simulated {

/// What the person does with a permission prompt, and how the platform passes the answer on.
struct PromptAnswer {
  enum class When : std::uint8_t {
    /// Inside the asking call, where the platform allows that; else right after it.
    atOnce,
    /// `after` seconds from the call, never inside it.
    later,
    never,
  };

  bool granted = true;
  When when = When::later;
  platform::Seconds after{0};
  bool onForeignThread = true;
};

/// Runs `deliver` as `answer` says. Main thread.
void passOn(SimulatedLoop& loop, const PromptAnswer& answer, std::function<void()> deliver);

}  // namespace tavelo::simulated
