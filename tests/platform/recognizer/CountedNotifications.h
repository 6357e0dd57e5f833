#pragma once

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

  int posted = 0;
  std::string last;
};

}  // namespace tavelo
