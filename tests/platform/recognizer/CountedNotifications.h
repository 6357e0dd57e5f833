#pragma once

#include <memory>
#include <string>

#include "platform/UserNotifications.h"

namespace tavelo {

/// Counts what the user would be told, and keeps the last text.
class CountedNotifications final : public platform::UserNotifications {
 public:
  void post(const std::string&, const std::string& body) override {
    posted += body.empty() ? 0 : 1;
    last = body;
  }

  std::shared_ptr<void> show(const std::string&, const std::string&) override {
    ++shown;
    ++visible;
    return {this, [](auto* self) { --self->visible; }};
  }

  int posted = 0;
  /// Of those that can be withdrawn: all so far, and those that were not withdrawn.
  int shown = 0;
  int visible = 0;
  std::string last;
};

}  // namespace tavelo
