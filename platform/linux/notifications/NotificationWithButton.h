#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <string>

namespace tavelo::linuxdesktop {

/// A notification with one button, which stays until the user answers it or this object goes. Nothing happens
/// if the desktop has no notifications, and not every service shows buttons. Main thread, with an application
/// object.
class NotificationWithButton final : public QObject {
  Q_OBJECT

 public:
  /// UTF-8. Returns at once. `pressed` is called when the user presses the button.
  NotificationWithButton(const std::string& title, const std::string& body, const std::string& button,
                         std::function<void()> pressed);
  /// Withdraws it.
  ~NotificationWithButton() override;
  NotificationWithButton(const NotificationWithButton&) = delete;
  NotificationWithButton& operator=(const NotificationWithButton&) = delete;

 private Q_SLOTS:
  void actionInvoked(unsigned notification, const QString& action);

 private:
  std::function<void()> pressed_;
  /// Its number, once the service has said it.
  std::optional<unsigned> number_;
};

}  // namespace tavelo::linuxdesktop
