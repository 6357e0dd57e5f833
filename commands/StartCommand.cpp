#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "app/DesktopArguments.h"
#include "app/DesktopProgram.h"
#include "app/DesktopSmallGtk.h"
#include "app/SingleInstance.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"

namespace tavelo {
namespace {

/// Without a screen to draw on, Qt would print several lines and abort with a core file.
void failInOneLine(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::fputs("tavelo: there is no desktop to start on (is DISPLAY right?)\n", stderr);
  std::_Exit(static_cast<int>(ExitCode::failed));
}

ExitCode openRunningMenu(const SingleInstance& instance) {
  DesktopArguments arguments;
  const QCoreApplication application(arguments.count, arguments.values);
  if (instance.send(InstanceMessage::showMenu, true) != InstanceAnswer::taken) {
    throw CommandFailure("it is already running, and does not answer");
  }
  print("Tavelo is already running; its menu is open.\n");
  return ExitCode::done;
}

}  // namespace

ExitCode runStart() {
  SingleInstance instance;
  if (!instance.claim()) {
    if (!instance.errorText().isEmpty()) throw CommandFailure(instance.errorText().toStdString());
    return openRunningMenu(instance);
  }
  DesktopProgram::describeApplication();
  const auto before = qInstallMessageHandler(failInOneLine);
  DesktopArguments arguments;
  const QApplication application =
      withSmallGtk([&] { return QApplication(arguments.count, arguments.values); });
  qInstallMessageHandler(before);
  DesktopProgram program;
  if (!instance.listen([&](InstanceMessage message) { program.receive(message); })) {
    throw CommandFailure(instance.errorText().toStdString());
  }
  return program.run() == 0 ? ExitCode::done : ExitCode::failed;
}

}  // namespace tavelo
