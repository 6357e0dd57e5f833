#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/ServiceContracts.h"

/// Doubles of every service and window. They write each call into one log, in order; the test calls the
/// callbacks.
namespace tavelo::doubles {

/// The log of the running test. `taken()` returns and empties it.
inline std::vector<std::string>& log() {
  static std::vector<std::string> lines;
  return lines;
}
inline void record(std::string line) { log().push_back(std::move(line)); }
inline std::vector<std::string> taken() { return std::exchange(log(), {}); }

struct Speech {
  Speech() { record("speech.made"); }
  DictationState state() const { return current; }
  void start(const std::string& locale) {
    record("speech.start " + locale);
    if (current == DictationState::listening) return;
    change(DictationState::listening);
  }
  void stop() {
    record("speech.stop");
    change(DictationState::idle);
    if (onTranscriptReady) onTranscriptReady(transcript);
  }
  void cancel() {
    record("speech.cancel");
    change(DictationState::idle);
  }
  void change(DictationState state) {
    current = state;
    if (onStateChange) onStateChange(state);
  }
  std::function<void(DictationState)> onStateChange;
  std::function<void(const std::string&)> onPartialTranscript;
  std::function<void(const std::string&)> onTranscriptReady;
  std::function<void(const std::string&)> onError;
  DictationState current = DictationState::idle;
  std::string transcript;
};

struct Permissions {
  Permissions() { record("permissions.made"); }
  bool isAccessibilityTrusted() const { return trusted; }
  void requestAccessibilityIfNeeded() { record("permissions.accessibility"); }
  void requestSpeechAndMicrophone(std::function<void(bool)> completion) {
    record("permissions.ask");
    if (answer) {
      completion(*answer);
    } else {
      waiting.push_back(std::move(completion));
    }
  }
  bool trusted = false;
  /// If absent, the test answers through `waiting`.
  std::optional<bool> answer = true;
  std::vector<std::function<void(bool)>> waiting;
};

struct HotKey {
  HotKey() { record("hotkey.made"); }
  void start() { record(onAction ? "hotkey.start" : "hotkey.start with nobody listening"); }
  std::function<void(HotKeyAction)> onAction;
  std::function<void()> onTrigger;
};

struct FocusCapture {
  FocusCapture() { record("focus.made"); }
  FocusTarget capture() {
    record("focus.capture");
    return {nullptr, next};
  }
  platform::AXUIElementRef next;
};

struct Insertion {
  Insertion() { record("insertion.made"); }
  void insert(const std::string& text, const std::optional<FocusTarget>& target) {
    record("insert " + text);
    into.push_back(target ? target->element : nullptr);
  }
  std::vector<platform::AXUIElementRef> into;
};

struct Cache {
  Cache() { record("cache.made"); }
  void add(const std::string& raw, const std::string& text, const std::string& locale = "vi_VN") {
    record("cache.add " + raw + " | " + text + " | " + locale);
  }
  std::optional<std::size_t> forget(std::size_t newest) {
    record("cache.forget " + std::to_string(newest));
    return newest;
  }
};

struct StatusMenu {
  StatusMenu() { record("menu.made"); }
  void setListening(bool value) { record(value ? "menu.listening" : "menu.idle"); }
  void setInsertDirectly(bool value) { record(value ? "menu.direct" : "menu.review"); }
  void setAccessibilityAvailable(bool value) { record(value ? "menu.trusted" : "menu.untrusted"); }
  void showError(const std::string& message) { record("alert " + message); }
  std::function<void()> onToggleDictation, onToggleInsertMode, onShowPermissions, onQuit, onTestInsert,
      onInsertLastText;
};

struct Overlay {
  Overlay() { record("overlay.made"); }
  void showRecording() { record("overlay.recording"); }
  void showTranscribing(const std::optional<std::string>& text) {
    record("overlay.transcribing " + text.value_or(""));
  }
  void showInserted() { record("overlay.inserted"); }
  void hide() { record("overlay.hide"); }
};

struct Review {
  Review() { record("review.made"); }
  void show(const std::string& text, std::function<void(const std::string&)> callback) {
    record("review.show " + text);
    onInsert = std::move(callback);
  }
  std::function<void(const std::string&)> onInsert;
  std::function<void()> onDismiss;
};

struct Services {
  using SpeechController = Speech;
  using InsertionService = Insertion;
  using PermissionService = Permissions;
  using HotKeyService = HotKey;
  using ReviewWindow = Review;
  using FloatingStatus = Overlay;
  using TranscriptCache = Cache;
  using FocusCaptureService = FocusCapture;
  using StatusController = StatusMenu;
};

}  // namespace tavelo::doubles
