#pragma once

#include <optional>
#include <string>

#include "commands/Diagnosis.h"

namespace tavelo {

/// What was found of the services that an X server provides. A plain value.
struct X11Facts {
  /// The display's name; absent if it cannot be reached.
  std::optional<std::string> display;
  /// A Wayland session hides its keys from X11 programs.
  bool waylandSession = false;

  /// Whether every key can be seen, whichever window has the focus.
  bool rawKeys = false;
  /// The key that serves as Fn, in words.
  std::string holdKey;
  /// Where the choice of that key comes from; see `origin` in Diagnosis.h.
  std::string holdKeyOrigin;
  /// The hold key that was asked for, if no key has that name. `holdKey` is used instead.
  std::optional<std::string> unknownHoldKey;
  bool keyboardHasHoldKey = false;

  /// Its name, which may be empty; absent if none runs or it does not identify itself.
  std::optional<std::string> windowManager;
  bool namesActiveWindow = false;

  bool clipboard = false;
  /// Whether a clipboard manager keeps what a program copied after it has ended.
  bool clipboardManager = false;
};

DisplayServerFindings diagnose(const X11Facts& facts);

}  // namespace tavelo
