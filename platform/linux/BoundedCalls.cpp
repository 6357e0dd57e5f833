#include "platform/linux/BoundedCalls.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <chrono>

#include "platform/linux/AtspiMessages.h"

namespace tavelo::linux {
namespace {

QDBusMessage notSent(const QDBusMessage& request) {
  return request.createErrorReply(QDBusError::NoReply, QStringLiteral("not sent"));
}

}  // namespace

std::vector<QDBusMessage> BoundedCalls::call(const QDBusConnection& connection,
                                             const std::vector<QDBusMessage>& requests) {
  std::vector<QDBusMessage> replies;
  replies.reserve(requests.size());
  const auto allowed =
      static_cast<int>(std::chrono::floor<std::chrono::milliseconds>(budget_.allowance()).count());
  const TurnBudget::Wait wait(budget_);

  std::vector<QDBusPendingCall> sent;
  sent.reserve(requests.size());
  for (const auto& request : requests) {
    const bool passes = allowed > 0 && !health_.isSuspended(request.service());
    sent.push_back(passes ? connection.asyncCall(request, allowed)
                          : QDBusPendingCall::fromCompletedCall(notSent(request)));
  }
  for (std::size_t i = 0; i < sent.size(); ++i) {
    // Has no deadline of its own, but the call has: it ends with an error then.
    sent[i].waitForFinished();
    replies.push_back(sent[i].reply());
    if (allowed > 0 && atspi::isTimeOut(replies.back())) health_.suspend(connection, requests[i].service());
  }
  return replies;
}

}  // namespace tavelo::linux
