#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace tavelo {

/// Makes an application object with `make`, and keeps GTK off the accessibility bus meanwhile. On a GTK
/// desktop Qt loads GTK to follow its theme. GTK would join the bus beside Qt, and wait for as long as a bus
/// does not answer. Programs that are started later do join. Main thread.
template <class Make>
auto withoutGtkBridge(const Make& make) {
  constexpr const char* variable = "NO_AT_BRIDGE";
  struct Restored {
    const bool wasSet = qEnvironmentVariableIsSet(variable);
    const QByteArray before = qgetenv(variable);
    ~Restored() { wasSet ? qputenv(variable, before) : qunsetenv(variable); }
  };
  const Restored restored;
  qputenv(variable, "1");
  return make();
}

}  // namespace tavelo
