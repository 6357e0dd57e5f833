#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Time.h"
#include "rehearsal/Story.h"

/// The program's three windows without a screen. They keep what the real windows show as plain values, and
/// the rehearsal acts as their user. Each fulfils the contract of its window. Main thread only.
namespace tavelo::rehearsal {

/// The state's name in stories and timelines.
std::string nameOf(OverlayState state);

/// The overlay.
class RehearsalOverlay final {
 public:
  RehearsalOverlay();

  void showRecording();
  void showTranscribing(const std::optional<std::string>& text);
  void showInserted();
  void hide();

  OverlayState state() const { return state_; }
  /// The second line.
  const std::string& detail() const { return detail_; }

  /// Called after each visible change.
  std::function<void(const RehearsalOverlay&)> onChange;

 private:
  void show(OverlayState state, std::string detail);

  platform::MainQueue& mainQueue_;
  OverlayState state_ = OverlayState::hidden;
  std::string detail_;
  platform::Lifetime lifetime_;
};

/// The status menu with its alerts.
class RehearsalStatusMenu final {
 public:
  RehearsalStatusMenu();

  void setListening(bool listening);
  void setInsertDirectly(bool insertDirectly);
  void setAccessibilityAvailable(bool available);

  /// Shows an alert for `readingTime`, the time its user needs; main-queue blocks run meanwhile.
  void showError(const std::string& message);

  bool isListening() const { return listening_; }
  /// The messages of all alerts so far.
  const std::vector<std::string>& alerts() const { return alerts_; }

  static constexpr platform::Seconds readingTime{1.0};

  std::function<void()> onToggleDictation;
  std::function<void()> onToggleInsertMode;
  std::function<void()> onShowPermissions;
  std::function<void()> onQuit;
  std::function<void()> onTestInsert;
  std::function<void()> onInsertLastText;

  /// Called with a short English phrase after each change of what the menu shows, and at each alert.
  std::function<void(const std::string& what)> onChange;

 private:
  void report(const std::string& what) const;

  platform::MainQueue& mainQueue_;
  platform::Clock& clock_;
  bool listening_ = false;
  std::vector<std::string> alerts_;
};

/// The review window.
class RehearsalReviewWindow final {
 public:
  void show(const std::string& text, std::function<void(const std::string&)> onInsert);

  /// The text in the window; absent while it is closed.
  const std::optional<std::string>& text() const { return text_; }

  /// The user presses "Chèn", having replaced the text with `edited` if given. Does nothing while closed.
  void confirm(const std::optional<std::string>& edited);

  /// The user cancels or closes the window. Does nothing while closed.
  void dismiss();

  std::function<void()> onDismiss;

  /// Called after the window opens, gets another text or closes.
  std::function<void(const RehearsalReviewWindow&)> onChange;

 private:
  void changed() const;

  std::optional<std::string> text_;
  std::function<void(const std::string&)> onInsert_;
  /// Counts the calls of `show`.
  unsigned reviews_ = 0;
};

}  // namespace tavelo::rehearsal
