#pragma once

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Clock.h"
#include "platform/KeyboardEvents.h"
#include "platform/Workspace.h"
#include "tests/contract/MainQueueContract.h"

namespace tavelo::contract {

class KeyboardBackend {
 public:
  virtual ~KeyboardBackend() = default;
  virtual platform::KeyboardEvents& keyboard() = 0;
  virtual platform::Clock& clock() = 0;
  /// Moves the key that stands for Fn and delivers its events.
  virtual void moveFunctionKey(bool down) = 0;
  /// Another key, which is no modifier, goes down and up while Fn is held; delivers its events.
  virtual void interruptHold() = 0;
  /// Activates one of the program's own windows, or a field of another application.
  virtual void setOwnWindowActive(bool active) = 0;
  /// The other application, which is in front unless one of our windows is active.
  virtual platform::ProcessIdentifier otherProcess() = 0;
  /// How often something was pasted into it, after all posted keys have arrived.
  virtual int pastes() = 0;
};

class KeyboardContract : public BackendTest<KeyboardBackend> {
 protected:
  static constexpr platform::KeyEventMask everything =
      platform::maskOf(platform::KeyEventType::flagsChanged) |
      platform::maskOf(platform::KeyEventType::keyDown) | platform::maskOf(platform::KeyEventType::keyUp);

  platform::KeyboardEvents& keyboard() { return backend().keyboard(); }
  std::unique_ptr<platform::EventTap> tap(platform::KeyboardEvents::Handler callback,
                                          platform::KeyEventMask mask = everything) {
    return keyboard().createEventTap(platform::EventTapLocation::session,
                                     platform::EventTapPlacement::headInsert,
                                     platform::EventTapOptions::listenOnly, mask, std::move(callback));
  }
  void tapFunctionKey() {
    backend().moveFunctionKey(true);
    backend().moveFunctionKey(false);
  }
};

}  // namespace tavelo::contract
