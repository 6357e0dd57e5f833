#pragma once

#include <optional>
#include <string>

namespace tavelo {

/// What a dictation needs of this desktop, as it was found. A plain value.
struct DesktopFacts {
  /// The X11 display's name; absent when none can be reached.
  std::optional<std::string> display;
  bool waylandSession = false;

  /// Whether every key can be seen, whoever has the focus.
  bool rawKeys = false;
  /// The key that serves as Fn, in words.
  std::string holdKey;
  /// What was asked for as hold key, when there is no such key; `holdKey` then stands in.
  std::optional<std::string> unknownHoldKey;
  /// Whether this keyboard has the hold key.
  bool keyboardHasHoldKey = false;

  bool accessibilityBus = false;
  /// Whether applications have been asked to be accessible.
  bool accessibilityEnabled = false;

  /// Its name; absent when none runs.
  std::optional<std::string> windowManager;
  bool namesActiveWindow = false;

  bool statusArea = false;

  bool clipboard = false;
  /// Whether somebody keeps the clipboard of a program that ends.
  bool clipboardManager = false;

  /// The microphone's name; absent when there is none.
  std::optional<std::string> microphone;
  /// Why it cannot be opened; empty when it can.
  std::string microphoneError;

  /// The server's address or the model's folder; absent when nothing is configured.
  std::optional<std::string> recognizer;
  /// Why it does not work; empty when it does.
  std::string recognizerError;

  /// Where the history is kept.
  std::string cacheFolder;
  /// Why nothing can be kept there; empty when it can.
  std::string cacheFolderError;
};

/// Asks this desktop; takes a second or two at the most. Needs a core application object and its main thread.
DesktopFacts collectDesktopFacts();

}  // namespace tavelo
