#include "platform/qt/QtWorkspace.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

namespace tavelo::qt {

std::shared_ptr<platform::RunningApplication> QtWorkspace::frontmostApplication() { return nullptr; }

bool QtWorkspace::open(const std::string& url) {
  const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
  return parsed.isValid() && QDesktopServices::openUrl(parsed);
}

}  // namespace tavelo::qt
