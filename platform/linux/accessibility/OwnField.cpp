#include "platform/linux/accessibility/OwnField.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodEvent>

namespace tavelo::linuxdesktop {
namespace {

bool takesText(QObject* object) {
  if (object == nullptr) return false;
  QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImReadOnly | Qt::ImHints);
  QCoreApplication::sendEvent(object, &query);
  const auto hints = Qt::InputMethodHints(query.value(Qt::ImHints).toInt());
  return query.value(Qt::ImEnabled).toBool() && !query.value(Qt::ImReadOnly).toBool() &&
         !hints.testFlag(Qt::ImhHiddenText);
}

}  // namespace

std::shared_ptr<OwnField> OwnField::focused() {
  auto* object = QGuiApplication::focusObject();
  return takesText(object) ? std::make_shared<OwnField>(object) : nullptr;
}

platform::AXError OwnField::setSelectedText(const std::string& text) const {
  if (!takesText(field_)) return platform::AXError::cannotComplete;
  QInputMethodEvent event;
  event.setCommitString(QString::fromStdString(text));
  QCoreApplication::sendEvent(field_, &event);
  return platform::AXError::success;
}

}  // namespace tavelo::linuxdesktop
