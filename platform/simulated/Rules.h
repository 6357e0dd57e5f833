#pragma once

#include <string>

#include "platform/MainQueue.h"

/// Rules that the simulated world checks. Breaking one is a program error: it prints one line on standard
/// error and aborts the process, in every build type.
namespace tavelo::simulated::rules {

[[noreturn]] void broken(const std::string& what);

/// Checks that the caller is on the main thread; `operation` names the call.
void requireMainThread(const platform::MainQueue& loop, const char* operation);

}  // namespace tavelo::simulated::rules
