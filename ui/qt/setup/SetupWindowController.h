#pragma once

#include <memory>

#include "ui/qt/setup/RecognizerSetup.h"
#include "ui/qt/setup/SetupDesktop.h"

namespace tavelo {

class SetupWindow;

/// The set-up window: opens it, once at a time, and lets a download go on when it is closed. Main thread,
/// with an application object and a platform.
class SetupWindowController final {
 public:
  explicit SetupWindowController(SetupDesktop desktop);
  ~SetupWindowController();
  SetupWindowController(const SetupWindowController&) = delete;
  SetupWindowController& operator=(const SetupWindowController&) = delete;

  /// Opens the window, or brings it to the front, and gives it the focus.
  void show();

  /// Whether the hold key is being chosen or tried in the window, so that it must not begin a dictation. It
  /// does once a recogniser is there.
  bool keepsHoldKey() const;

 private:
  void fetched(bool worked) const;

  const SetupDesktop desktop_;
  RecognizerSetup recognizer_;
  std::unique_ptr<SetupWindow> window_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
