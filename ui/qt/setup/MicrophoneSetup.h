#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include "platform/Audio.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "ui/qt/setup/SetupDesktop.h"
#include "ui/qt/setup/SetupLines.h"

namespace tavelo {

/// The microphone's line of the set-up window: which microphones there are, and whether the chosen one hears
/// anything. Records while it lives, and keeps nothing of it. Main thread.
class MicrophoneSetup final {
 public:
  /// How often it looks for microphones.
  static constexpr platform::Seconds lookInterval{2.0};
  /// After this long without a sound the line says what may be wrong.
  static constexpr platform::Seconds patience{8.0};
  /// The level of a sound that counts as heard. The noise of a quiet room stays below.
  static constexpr double heardLevel = 0.03;

  /// `desktop` must outlive this object. Begins at once.
  explicit MicrophoneSetup(const SetupDesktop& desktop);
  ~MicrophoneSetup();
  MicrophoneSetup(const MicrophoneSetup&) = delete;
  MicrophoneSetup& operator=(const MicrophoneSetup&) = delete;

  /// Called when the list or the line has changed.
  std::function<void()> onChange;

  LineState line() const { return microphoneLine(facts_); }
  const SoundSourceList& list() const { return facts_.list; }
  /// Empty for the system's default.
  const std::string& chosen() const { return facts_.chosen; }

  /// The highest level since the last call, from 0 to 1. To be called some times a second: it also finds out
  /// whether something was heard.
  double takeLevel();

  /// Records from another source from now on. Returns why that could not be saved; empty if it was.
  std::string choose(const std::string& name);

 private:
  void look();
  void found(const SoundSourceList& list);
  void record();
  void stop();
  void listenAnew();

  const SetupDesktop& desktop_;
  platform::MainQueue& mainQueue_;
  platform::Audio& audio_;
  MicrophoneFacts facts_;
  std::unique_ptr<platform::AudioEngine> engine_;
  /// Written by the engine's thread.
  std::atomic<double> level_ = 0;
  /// Counts the choices, so that an earlier one's patience does not run out for a later one.
  int listenings_ = 0;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
