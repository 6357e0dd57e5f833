#include "platform/linux/accessibility/BoundedCalls.h"

#include <QDBusError>
#include <algorithm>
#include <chrono>
#include <limits>

#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/BusHandshake.h"

namespace tavelo::linuxdesktop {
namespace {

/// A time-out after less than this is not the application's fault.
constexpr std::chrono::milliseconds shortestTrial{20};

/// D-Bus's number for a call without a time limit; no timer runs for it.
constexpr int noTimeOut = std::numeric_limits<int>::max();

/// A different error from that of a silent application, which was asked.
QDBusMessage notSent(const QDBusMessage& request) {
  return request.createErrorReply(QDBusError::LimitsExceeded, QStringLiteral("not sent"));
}

}  // namespace

std::vector<QDBusMessage> BoundedCalls::call(const QDBusConnection& connection,
                                             const std::vector<QDBusMessage>& requests,
                                             platform::Uptime limit) {
  const auto allowance = std::min(limit, budget_.allowance());
  const TurnBudget::Wait wait(budget_);

  std::vector<QDBusPendingCall> sent;
  sent.reserve(requests.size());
  for (const auto& request : requests) {
    // Sending thousands of requests takes time too. All of them share one deadline.
    const auto left = std::chrono::floor<std::chrono::milliseconds>(allowance - wait.elapsed()).count();
    const bool passes = left > 0 && !isSuspended(request.service());
    sent.push_back(passes ? connection.asyncCall(request, static_cast<int>(left))
                          : QDBusPendingCall::fromCompletedCall(notSent(request)));
  }
  std::vector<QDBusMessage> replies;
  replies.reserve(requests.size());
  for (std::size_t i = 0; i < sent.size(); ++i) {
    // This wait has no limit of its own, but the call has one and ends with an error then.
    sent[i].waitForFinished();
    replies.push_back(sent[i].reply());
    if (allowance >= shortestTrial && atspi::isTimeOut(replies.back()))
      suspend(connection, requests[i].service());
  }
  return replies;
}

bool BoundedCalls::reaches(const QString& busAddress, platform::Uptime limit) {
  const auto allowance = std::chrono::floor<std::chrono::milliseconds>(std::min(limit, budget_.allowance()));
  const TurnBudget::Wait wait(budget_);
  return completesHandshake(busAddress, allowance);
}

bool BoundedCalls::isSuspended(const QString& service) {
  const auto found = unanswered_.find(service);
  if (found == unanswered_.end()) return false;
  // An error is an answer too; the bus sends one for an application that has ended.
  if (!found->second.isFinished()) return true;
  unanswered_.erase(found);
  return false;
}

void BoundedCalls::suspend(const QDBusConnection& connection, const QString& service) {
  if (unanswered_.contains(service)) return;
  // Applications that have ended: nobody asks about them again.
  std::erase_if(unanswered_, [](const auto& each) { return each.second.isFinished(); });
  // Not the bus's own Ping: toolkits answer it on a separate thread even while their main thread hangs.
  unanswered_.emplace(service, connection.asyncCall(
                                   atspi::request(rootOf(service), atspi::accessible, "GetRole"), noTimeOut));
}

}  // namespace tavelo::linuxdesktop
