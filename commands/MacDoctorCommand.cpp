#include <string>

#include "app/MacWiring.h"
#include "app/SingleInstance.h"
#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/DoctorReport.h"
#include "commands/InputOutput.h"
#include "commands/MacDiagnosis.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/Environment.h"
#include "platform/KeyboardEvents.h"
#include "platform/Platform.h"

namespace tavelo {
namespace {

/// Examines this process, with a tap like the program's.
std::vector<Finding> examineThisProcess() {
  const MacWiring wiring;
  using namespace platform;
  const auto tap = current().keyboardEvents.createEventTap(
      EventTapLocation::session, EventTapPlacement::headInsert, EventTapOptions::listenOnly,
      maskOf(KeyEventType::flagsChanged), [](const KeyboardEvent&) {});
  return diagnose(examineMac());
}

}  // namespace

ExitCode runDoctor(const DoctorOptions& options) {
  if (options.json) {
    language::use(language::Language::english);
    const DoctorReport report{.version = options.version,
                              .session = "macos",
                              .desktop = {},
                              .home = platform::environmentVariable("HOME"),
                              .user = platform::environmentVariable("USER"),
                              .findings = examineThisProcess()};
    print(toJson(report) + "\n");
    return canDictate(report.findings) ? ExitCode::done : ExitCode::failed;
  }
  // macOS grants permissions to a program, and to a command those of the terminal it runs in.
  const auto reply = SingleInstance(instanceFolder()).send(InstanceMessage::examine, false);
  if (reply.answer == InstanceAnswer::silent) throw CommandFailure(language::say(language::words::noAnswer));
  if (reply.answer == InstanceAnswer::taken) {
    print(reply.words);
    return canDictate(reply.words) ? ExitCode::done : ExitCode::failed;
  }
  const auto findings = examineThisProcess();
  print("Tavelo is not running. These are the permissions of this terminal; start Tavelo to see its own.\n" +
        describe(findings));
  return canDictate(findings) ? ExitCode::done : ExitCode::failed;
}

}  // namespace tavelo
