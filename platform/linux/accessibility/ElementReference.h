#pragma once

#include <QString>

namespace tavelo::linuxdesktop {

/// Names an element on the accessibility bus: the application's bus name and the element's object path.
struct ElementReference {
  QString service;
  QString path;

  bool operator==(const ElementReference&) const = default;
};

/// The element that stands for a whole application.
inline ElementReference rootOf(const QString& service) {
  return {service, QStringLiteral("/org/a11y/atspi/accessible/root")};
}

}  // namespace tavelo::linuxdesktop
