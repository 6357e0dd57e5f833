#pragma once

#include "app/AppDelegate.h"
#include "app/SingleInstance.h"

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
      return;  // Its answer is all there is to do.
  }
}

}  // namespace tavelo
