#include "platform/linux/accessibility/ApplicationHealth.h"

#include <limits>

#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {
namespace {

/// D-Bus's number for a call that waits as long as it takes; no timer runs for it.
constexpr int noTimeOut = std::numeric_limits<int>::max();

}  // namespace

void ApplicationHealth::suspend(const QDBusConnection& connection, const QString& service) {
  if (unanswered_.contains(service)) return;
  // Of those that ended nobody will ask again.
  std::erase_if(unanswered_, [](const auto& each) { return each.second.isFinished(); });
  // Not the bus's own Ping: toolkits answer that on a thread of its own while their main thread hangs.
  unanswered_.emplace(service, connection.asyncCall(
                                   atspi::request(rootOf(service), atspi::accessible, "GetRole"), noTimeOut));
}

bool ApplicationHealth::isSuspended(const QString& service) {
  const auto found = unanswered_.find(service);
  if (found == unanswered_.end()) return false;
  // An error is an answer too; the bus gives it for an application that has ended.
  if (!found->second.isFinished()) return true;
  unanswered_.erase(found);
  return false;
}

}  // namespace tavelo::linuxdesktop
