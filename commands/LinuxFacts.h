#pragma once

#include <optional>
#include <string>

namespace tavelo {

/// What a dictation needs of this desktop, as it was found. A plain value.
struct LinuxFacts {
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

  /// Why no microphone can be opened, as the user is told it; empty when one can.
  std::string microphoneError;

  /// What recognises, and where: one clause.
  std::string recognizer;
  /// Whether anything is there to recognise Vietnamese.
  bool recognizerIsConfigured = false;
  /// Why it does not work; empty when it does.
  std::string recognizerError;

  /// Where the history is kept.
  std::string cacheFolder;
  /// Why nothing can be kept there; empty when it can.
  std::string cacheFolderError;
};

/// Asks this desktop; takes a second or two at the most. Needs a core application object and its main thread.
LinuxFacts collectLinuxFacts();

}  // namespace tavelo
