#include "commands/DesktopCommands.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/DesktopProgram.h"
#include "app/SingleInstance.h"
#include "commands/CommandFailure.h"
#include "commands/Diagnosis.h"
#include "commands/LinuxFacts.h"
#include "commands/Output.h"

namespace tavelo {
namespace {

/// What Qt wants to see of the command line, which it may change.
struct Arguments {
  int count = 1;
  char name[7] = "tavelo";
  char* values[2] = {name, nullptr};
};

/// Qt ends the process, in several lines and with a core file, when it finds no screen to draw on.
void failInOneLine(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::fputs("tavelo: there is no desktop to start on (is DISPLAY right?)\n", stderr);
  std::_Exit(static_cast<int>(ExitCode::failed));
}

ExitCode openRunningMenu(const SingleInstance& instance) {
  if (instance.send(InstanceMessage::showMenu, true) != InstanceAnswer::taken) {
    throw CommandFailure("it is already running, and does not answer");
  }
  print("Tavelo is already running; its menu is open.\n");
  return ExitCode::done;
}

ExitCode start() {
  Arguments arguments;
  SingleInstance instance;
  if (!instance.claim()) {
    if (!instance.errorText().isEmpty()) throw CommandFailure(instance.errorText().toStdString());
    const QCoreApplication application(arguments.count, arguments.values);
    return openRunningMenu(instance);
  }
  DesktopProgram::describeApplication();
  const auto before = qInstallMessageHandler(failInOneLine);
  const QApplication application(arguments.count, arguments.values);
  qInstallMessageHandler(before);
  DesktopProgram program;
  if (!instance.listen([&](InstanceMessage message) { program.receive(message); })) {
    throw CommandFailure(instance.errorText().toStdString());
  }
  return program.run() == 0 ? ExitCode::done : ExitCode::failed;
}

ExitCode insertLast() {
  Arguments arguments;
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

ExitCode doctor() {
  Arguments arguments;
  const QCoreApplication application(arguments.count, arguments.values);
  const auto findings = diagnose(collectLinuxFacts());
  print(describe(findings));
  return canDictate(findings) ? ExitCode::done : ExitCode::failed;
}

}  // namespace

DesktopCommands desktopCommands() { return {.start = start, .insertLast = insertLast, .doctor = doctor}; }

}  // namespace tavelo
