#pragma once

#include <QSize>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Lifetime.h"
#include "platform/Platform.h"
#include "ui/qt/WindowPlacement.h"

namespace tavelo {

class OverlayLabel;
class OverlayPanel;
class RecordingDotView;

/// The overlay that tells what the dictation is doing, at the top of the screen with the pointer. What it
/// shows depends only on the operation called last.
///
/// Never takes the focus, so that the text goes where the user was typing. Without any screen it is neither
/// placed nor shown. Main thread only.
class FloatingStatusWindowController final {
 public:
  static constexpr QSize compactSize{220, 56};
  static constexpr int screenMargin = 40;

  /// Builds the overlay, hidden. `screens` tells the screen layout each time the overlay is shown.
  explicit FloatingStatusWindowController(platform::MainQueue& mainQueue = platform::current().mainQueue,
                                          platform::Workspace& workspace = platform::current().workspace,
                                          std::function<ScreenLayout()> screens = currentScreenLayout);
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
  void buildContent();
  void show(const QString& title, const QString& detail, bool active);
  /// False when there is no screen.
  bool place();

  platform::MainQueue& mainQueue_;
  std::function<ScreenLayout()> screens_;
  std::unique_ptr<OverlayPanel> panel_;
  /// Children of the panel.
  RecordingDotView* dotView_;
  OverlayLabel* titleLabel_;
  OverlayLabel* detailLabel_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
