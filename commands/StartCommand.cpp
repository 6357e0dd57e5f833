#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/DesktopArguments.h"
#include "app/DesktopProgram.h"
#include "app/DesktopSmallGtk.h"
#include "app/SingleInstance.h"
#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "commands/RunningProgram.h"
#include "platform/Platform.h"

namespace tavelo {
namespace {

/// Without a screen to draw on, Qt would print several lines and abort with a core file.
void failInOneLine(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::fputs("tavelo: there is no desktop to start on (is DISPLAY right?)\n", stderr);
  std::_Exit(static_cast<int>(ExitCode::failed));
}

/// Runs the program as the one `instance`.
ExitCode run(SingleInstance& instance, bool setsUp) {
  DesktopProgram::describeApplication();
  const auto before = qInstallMessageHandler(failInOneLine);
  DesktopArguments arguments;
  const QApplication application =
      withSmallGtk([&] { return QApplication(arguments.count, arguments.values); });
  qInstallMessageHandler(before);
  DesktopProgram program;
  if (setsUp) program.setUpAtStart();
  const auto receive = [&](InstanceMessage message) {
    program.receive(message);
    return std::string();
  };
  const auto listening = instance.listen(platform::current().mainQueue, receive);
  if (!listening) throw CommandFailure(instance.errorText());
  return program.run() == 0 ? ExitCode::done : ExitCode::failed;
}

}  // namespace

ExitCode runStart() {
  SingleInstance instance(instanceFolder());
  return instance.claim() ? run(instance, false) : openRunningMenu(instance);
}

ExitCode runSetup() {
  SingleInstance instance(instanceFolder());
  return instance.claim() ? run(instance, true) : openRunningSetup(instance);
}

}  // namespace tavelo
