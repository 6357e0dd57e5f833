#include "platform/linux/accessibility/BoundedCalls.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <chrono>

#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/BusGreeting.h"

namespace tavelo::linuxdesktop {
namespace {

/// An application that was given less is not to blame.
constexpr std::chrono::milliseconds shortestTrial{20};

/// Not the error of an application that says nothing: it was not asked.
QDBusMessage notSent(const QDBusMessage& request) {
  return request.createErrorReply(QDBusError::LimitsExceeded, QStringLiteral("not sent"));
}

}  // namespace

std::vector<QDBusMessage> BoundedCalls::call(const QDBusConnection& connection,
                                             const std::vector<QDBusMessage>& requests) {
  std::vector<QDBusMessage> replies;
  replies.reserve(requests.size());
  const auto allowance = budget_.allowance();
  const TurnBudget::Wait wait(budget_);

  std::vector<QDBusPendingCall> sent;
  sent.reserve(requests.size());
  for (const auto& request : requests) {
    // Thousands of requests take their time to be sent; all the same they end together.
    const auto left = std::chrono::floor<std::chrono::milliseconds>(allowance - wait.elapsed()).count();
    const bool passes = left > 0 && !health_.isSuspended(request.service());
    sent.push_back(passes ? connection.asyncCall(request, static_cast<int>(left))
                          : QDBusPendingCall::fromCompletedCall(notSent(request)));
  }
  for (std::size_t i = 0; i < sent.size(); ++i) {
    // Has no deadline of its own, but the call has: it ends with an error then.
    sent[i].waitForFinished();
    replies.push_back(sent[i].reply());
    if (allowance >= shortestTrial && atspi::isTimeOut(replies.back()))
      health_.suspend(connection, requests[i].service());
  }
  return replies;
}

bool BoundedCalls::reaches(const QString& busAddress) {
  const auto allowance = std::chrono::floor<std::chrono::milliseconds>(budget_.allowance());
  const TurnBudget::Wait wait(budget_);
  return busGreets(busAddress, allowance);
}

}  // namespace tavelo::linuxdesktop
