#include "platform/linux/accessibility/ToolkitBridge.h"

#include <QAccessible>
#include <QByteArray>
#include <QCoreApplication>
#include <QtGlobal>

namespace tavelo::linuxdesktop {
namespace {

constexpr const char* addressVariable = "AT_SPI_BUS_ADDRESS";

}  // namespace

void keepToolkitFromBus() {
  const QByteArray before = qgetenv(addressVariable);
  // Qt then looks for no other bus. It cannot connect to this one, and gives up at once.
  qputenv(addressVariable, "disabled:");
  // Makes the bridge, which reads the variable.
  QAccessible::setRootObject(QCoreApplication::instance());
  // Programs that we start look for themselves.
  if (before.isNull()) {
    qunsetenv(addressVariable);
  } else {
    qputenv(addressVariable, before);
  }
}

}  // namespace tavelo::linuxdesktop
