#pragma once

#include <QDialog>
#include <QIcon>
#include <functional>
#include <optional>
#include <string>

namespace tavelo {

/// The panel that tells what the program is and who made it. Main thread.
class AboutPanel final : public QDialog {
 public:
  /// `portrait` are the bytes of a picture; an absent or unreadable one leaves its place empty. `openLink` is
  /// called with the address that was clicked, when it is a valid one.
  AboutPanel(const QIcon& icon, const std::optional<std::string>& portrait,
             std::function<void(const std::string&)> openLink);

 private:
  QWidget* accessoryView(const std::optional<std::string>& portrait);
  QWidget* websiteLinkView(QWidget* parent);

  std::function<void(const std::string&)> openLink_;
};

}  // namespace tavelo
