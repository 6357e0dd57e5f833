#include <string>

#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "platform/linux/session/Autostart.h"

namespace tavelo {
namespace {

using linuxdesktop::Autostart;

std::string describe(const Autostart& autostart) {
  const auto [state, program] = autostart.status();
  switch (state) {
    case Autostart::State::on:
      return "on: your session starts " + program;
    case Autostart::State::elsewhere:
      return "on, but your session starts " + program + "; “tavelo autostart on” has it start this program";
    case Autostart::State::foreign:
      return "off: " + autostart.file().value_or("").string() + " starts another program, " + program;
    case Autostart::State::off:
      break;
  }
  return "off";
}

}  // namespace

ExitCode runAutostart(const AutostartOptions& options) {
  auto autostart = Autostart::ofUser();
  if (options.action != "status") {
    if (const auto error = autostart.set(options.action == "on"); !error.empty()) throw CommandFailure(error);
  }
  print(onOneLine(describe(autostart)) + "\n");
  return ExitCode::done;
}

}  // namespace tavelo
