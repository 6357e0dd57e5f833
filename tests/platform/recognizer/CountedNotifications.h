#pragma once

#include <string>

#include "platform/UserNotifications.h"

namespace tavelo {

/// Counts what the user would be told.
class CountedNotifications final : public platform::UserNotifications {
 public:
  void post(const std::string&, const std::string& body) override { posted += body.empty() ? 0 : 1; }

  int posted = 0;
};

}  // namespace tavelo
