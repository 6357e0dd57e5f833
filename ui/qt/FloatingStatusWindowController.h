#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Lifetime.h"
#include "platform/Platform.h"
#include "ui/qt/QtGeometry.h"

namespace tavelo {

class OverlayPanel;

/// The overlay at the top of the screen with the pointer, which says what the dictation is doing. It shows
/// what the last call asked for.
///
/// Never takes the focus, so that the text goes where the user was typing. Without any screen it is neither
/// placed nor shown. Main thread only.
class FloatingStatusWindowController final {
 public:
  /// Builds the overlay, hidden. `screens` is asked for the screen layout each time the overlay is shown.
  explicit FloatingStatusWindowController(platform::MainQueue& mainQueue = platform::current().mainQueue,
                                          platform::Workspace& workspace = platform::current().workspace,
                                          std::function<ScreenLayout()> screens = currentScreenLayout,
                                          const platform::Names& names = platform::current().names);
  ~FloatingStatusWindowController();
  FloatingStatusWindowController(const FloatingStatusWindowController&) = delete;
  FloatingStatusWindowController& operator=(const FloatingStatusWindowController&) = delete;

  /// Says which key to release; just that one is to be released where the key's name is too long.
  void showRecording();
  /// Shows a preview of `text` (UTF-8), which may be absent.
  void showTranscribing(const std::optional<std::string>& text);
  /// Hides the overlay 0.9 s later, whatever it shows then.
  void showInserted();
  void hide();

 private:
  void show(const char* title, const std::string& detail, bool active);
  /// False when there is no screen.
  bool place();

  platform::MainQueue& mainQueue_;
  std::function<ScreenLayout()> screens_;
  const platform::Names& names_;
  std::unique_ptr<OverlayPanel> panel_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
