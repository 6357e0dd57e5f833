#pragma once

#include <optional>
#include <string>

#include "app/AppDelegate.h"
#include "app/SingleInstance.h"
#include "text/TranscriptCacheFile.h"

namespace tavelo {

/// Does what another start of the program or a command asks for. Main thread, on the main queue; launching
/// must have finished. Showing the menu may wait for the user.
template <ServiceBundle Services>
void perform(AppDelegate<Services>& delegate, InstanceMessage message) {
  switch (message) {
    case InstanceMessage::showMenu:
      return delegate.statusController().openMenu();
    case InstanceMessage::insertLastText:
      return delegate.scheduleInsertLastText();
    case InstanceMessage::startListening:
      return delegate.startDictationIfNeeded();
    case InstanceMessage::stopListening:
      return delegate.stopDictationIfNeeded();
    case InstanceMessage::toggleListening:
      return delegate.toggleDictation();
    case InstanceMessage::cancelListening:
      return delegate.cancelDictationIfNeeded();
    case InstanceMessage::setUp:
      return;  // The program itself has the window.
    case InstanceMessage::examine:
    case InstanceMessage::forgetHistory:
      return;  // Its answer is all there is to do.
    case InstanceMessage::restart:
      return;  // What runs the coordinator can.
  }
}

/// Answers `InstanceMessage::forgetHistory`, with its argument: how many dictations were forgotten, or empty
/// words if that failed. Main thread.
template <ServiceBundle Services>
std::string forget(AppDelegate<Services>& delegate, const std::string& argument) {
  const auto newest = TranscriptCacheFile::countNamed(argument);
  const auto count = newest ? delegate.forgetDictations(*newest) : std::nullopt;
  return count ? std::to_string(*count) : std::string();
}

}  // namespace tavelo
