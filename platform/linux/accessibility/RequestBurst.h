#pragma once

#include <QDBusMessage>
#include <cstddef>
#include <vector>

#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/Result.h"

namespace tavelo::linuxdesktop {

/// Requests that are sent together and cost one round trip. An application handles its own in the order in
/// which they were added. Add requests, send once, then read replies. Main thread.
class RequestBurst final {
 public:
  /// Stands for the reply to one request of the burst that returned it.
  template <class Value>
  struct Reply {
    std::size_t index;
    Result<Value> (*reader)(const QDBusMessage& reply);
  };

  explicit RequestBurst(AccessibilityBus& bus) : bus_(bus) {}

  /// `reader` turns the reply into a value, such as `atspi::readString`.
  template <class Value>
  Reply<Value> add(const QDBusMessage& request, Result<Value> (*reader)(const QDBusMessage& reply)) {
    requests_.push_back(request);
    return {requests_.size() - 1, reader};
  }

  /// Waits for all replies, within the bounds of `AccessibilityBus::call`.
  void send() { replies_ = bus_.call(requests_); }

  template <class Value>
  Result<Value> read(Reply<Value> reply) const {
    return reply.reader(replies_[reply.index]);
  }

  /// Whether the request was sent but its reply did not come in time.
  template <class Value>
  bool timedOut(Reply<Value> reply) const {
    return atspi::isTimeOut(replies_[reply.index]);
  }

 private:
  AccessibilityBus& bus_;
  std::vector<QDBusMessage> requests_;
  std::vector<QDBusMessage> replies_;
};

}  // namespace tavelo::linuxdesktop
