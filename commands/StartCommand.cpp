#include <QApplication>
#include <cstdint>
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
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/Platform.h"

namespace tavelo {
namespace {

/// Without a screen to draw on, Qt would print several lines and abort with a core file.
void failInOneLine(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::fprintf(stderr, "tavelo: %s\n", language::say(language::words::noScreen).c_str());
  std::_Exit(static_cast<int>(ExitCode::failed));
}

/// The answer to `examine`.
std::string wordFor(platform::ProgramFile file) {
  return file == platform::ProgramFile::replaced ? replacedProgram : "";
}

/// What opens of a program that runs already.
enum class Opens : std::uint8_t { menu, setup };

/// Everything made here is gone again when it returns. `startAgain` says what is to be done then.
ExitCode runUntilQuit(Opens opens, bool& startAgain) {
  SingleInstance instance(instanceFolder());
  if (!instance.claim())
    return opens == Opens::setup ? openRunningSetup(instance) : openRunningMenu(instance);
  DesktopProgram::describeApplication();
  const auto before = qInstallMessageHandler(failInOneLine);
  DesktopArguments arguments;
  const QApplication application =
      withSmallGtk([&] { return QApplication(arguments.count, arguments.values); });
  qInstallMessageHandler(before);
  // From here on all that the user sees is in windows and notifications, which are Vietnamese.
  language::use(language::Language::vietnamese);
  DesktopProgram program;
  if (opens == Opens::setup) program.setUpAtStart();
  const auto receive = [&](InstanceMessage message, const std::string& argument) {
    if (message == InstanceMessage::examine) return wordFor(program.programFile());
    if (message == InstanceMessage::forgetHistory) return program.forget(argument);
    program.receive(message);
    return std::string();
  };
  const auto listening = instance.listen(platform::current().mainQueue, receive);
  if (!listening) throw CommandFailure(instance.errorText());
  const int status = program.run();
  startAgain = program.wantsToStartAgain();
  return status == 0 ? ExitCode::done : ExitCode::failed;
}

ExitCode run(Opens opens) {
  bool startAgain = false;
  const auto status = runUntilQuit(opens, startAgain);
  if (startAgain) startInThisProcess();
  return status;
}

}  // namespace

ExitCode runStart() { return run(Opens::menu); }

ExitCode runSetup() { return run(Opens::setup); }

}  // namespace tavelo
