#pragma once

#include <string>

#include "platform/MainQueue.h"

/// What the world checks of the program by itself. A broken rule is a program error: one line on standard
/// error, then the process aborts, in every build type.
namespace tavelo::simulated::rules {

[[noreturn]] void broken(const std::string& what);

/// The platform's headers call `operation` main-thread.
void requireMainThread(const platform::MainQueue& loop, const char* operation);

}  // namespace tavelo::simulated::rules
