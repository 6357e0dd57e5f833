#include <QCoreApplication>

#include "app/DesktopArguments.h"
#include "app/SingleInstance.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"

namespace tavelo {

ExitCode runInsertLast() {
  DesktopArguments arguments;
  const QCoreApplication application(arguments.count, arguments.values);
  const auto answer = SingleInstance().send(InstanceMessage::insertLastText, false);
  if (answer == InstanceAnswer::taken) return ExitCode::done;
  throw CommandFailure(answer == InstanceAnswer::nobody ? "it is not running"
                                                        : "the running program does not answer");
}

}  // namespace tavelo
