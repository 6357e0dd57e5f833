#pragma once

#include <cstdint>
#include <functional>

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"

namespace tavelo::platform {

/// Notices that nobody fetched the text after a paste command: an open menu or a launcher had the keyboard,
/// or the application hangs. Only where the pasteboard sees who reads it. Main thread.
class UnreadPaste final {
 public:
  /// Both must outlive this object.
  UnreadPaste(MainQueue& mainQueue, Pasteboard& pasteboard)
      : mainQueue_(mainQueue), pasteboard_(pasteboard) {}

  /// A paste command goes out. Replaces an earlier one.
  void expect();
  /// The user knows already that the text was not pasted.
  void forget() { ++pastes_; }

  /// Called once, 3.5 s after the command, if the text has not been fetched by then.
  std::function<void()> onUnread;

 private:
  MainQueue& mainQueue_;
  Pasteboard& pasteboard_;
  std::uint64_t pastes_ = 0;
  Lifetime lifetime_;
};

}  // namespace tavelo::platform
