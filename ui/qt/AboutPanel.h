#pragma once

#include <QDialog>
#include <QIcon>
#include <functional>
#include <optional>
#include <string>

namespace tavelo {

/// The panel that says what the program is and who made it. Main thread.
class AboutPanel final : public QDialog {
 public:
  /// `portrait` holds the bytes of a picture; if it is absent or unreadable, its place stays empty.
  /// `openLink` gets the address that the user clicked, if it is valid.
  AboutPanel(const QIcon& icon, const std::optional<std::string>& portrait,
             std::function<void(const std::string&)> openLink);

 private:
  QWidget* accessoryView(const std::optional<std::string>& portrait);
  QWidget* websiteLinkView(QWidget* parent);

  std::function<void(const std::string&)> openLink_;
};

}  // namespace tavelo
