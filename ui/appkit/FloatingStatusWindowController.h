#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Lifetime.h"
#include "platform/Platform.h"

namespace tavelo {

/// The overlay at the top of the screen with the pointer, which says what the dictation is doing. It shows
/// what the last call asked for.
///
/// Never takes the focus, so that the text goes where the user was typing. Without any screen it is neither
/// placed nor shown. Main thread only.
class FloatingStatusWindowController final {
 public:
  /// Builds the overlay, hidden.
  explicit FloatingStatusWindowController(platform::MainQueue& mainQueue = platform::current().mainQueue,
                                          const platform::Names& names = platform::current().names);
  ~FloatingStatusWindowController();
  FloatingStatusWindowController(const FloatingStatusWindowController&) = delete;
  FloatingStatusWindowController& operator=(const FloatingStatusWindowController&) = delete;

  void showRecording();
  /// Shows a preview of `text` (UTF-8), which may be absent.
  void showTranscribing(const std::optional<std::string>& text);
  /// Hides the overlay 0.9 s later, whatever it shows then.
  void showInserted();
  void hide();

 private:
  /// The window controller and the views.
  struct Overlay;

  void show(const char* title, const std::string& detail, bool active);
  void show();
  /// False when there is no screen.
  bool positionNearTopRight();

  platform::MainQueue& mainQueue_;
  const platform::Names& names_;
  std::unique_ptr<Overlay> overlay_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
