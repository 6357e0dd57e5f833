#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/KeyFacts.h"
#include "ui/qt/setup/SetupDesktop.h"

/// What each line of the set-up window says, and whether it is green. Vietnamese. Any thread.
namespace tavelo {

enum class Mark : std::uint8_t { missing, working, done };

struct LineState {
  Mark mark = Mark::missing;
  /// One sentence or two. If the line is not green, they say what to do.
  std::string text;

  bool operator==(const LineState&) const = default;
};

struct MicrophoneFacts {
  SoundSourceList list;
  /// The name of the chosen one; empty for the system's default.
  std::string chosen;
  bool isAnswered = false;
  bool hasHeard = false;
  /// For so long that nobody can have been waiting for the user.
  bool isSilent = false;
  /// Why recording cannot begin; empty if it can.
  std::string error;
};
LineState microphoneLine(const MicrophoneFacts& facts);

enum class FetchState : std::uint8_t { none, looking, fetching, paused, unpacking, failed };
struct RecognizerFacts {
  RecognizerCondition condition;
  FetchState fetch = FetchState::none;
  /// Whether a server is being tried.
  bool isTrying = false;
  /// Why the configured server did not pass; empty if it did.
  std::string trialFailure;
};
LineState recognizerLine(const RecognizerFacts& facts);

struct KeyLineFacts {
  bool canWatch = false;
  bool isChoosing = false;
  bool wasHeld = false;
  std::string holdKey;
  /// The key that was refused last; `free` if none was.
  platform::KeyFacts refused{.setting = {}, .name = {}, .use = platform::KeyUse::free};
};
LineState keyLine(const KeyLineFacts& facts);

LineState accessibilityLine(AccessibilityCondition condition, const std::vector<std::string>& unreachable);

}  // namespace tavelo
