#include <QCoreApplication>

#include "app/DesktopArguments.h"
#include "app/SingleInstance.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"

namespace tavelo {

ExitCode runInsertLast() {
  DesktopArguments arguments;
  const QCoreApplication application(arguments.count, arguments.values);
  switch (SingleInstance().send(InstanceMessage::insertLastText, false)) {
    case InstanceAnswer::taken:
      return ExitCode::done;
    case InstanceAnswer::silent:
      throw CommandFailure("the running program does not answer");
    case InstanceAnswer::nobody:
      break;
  }
  throw CommandFailure("it is not running");
}

}  // namespace tavelo
