#include <string>

#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/linux/session/Autostart.h"

namespace tavelo {
namespace {

using language::say;
using linuxdesktop::Autostart;
namespace words = language::words;

std::string describe(const Autostart& autostart) {
  const auto [state, program] = autostart.status();
  switch (state) {
    case Autostart::State::on:
      return say(words::autostartOn, {program});
    case Autostart::State::elsewhere:
      return say(words::autostartElsewhere, {program});
    case Autostart::State::foreign:
      return say(words::autostartForeign, {autostart.file().value_or("").string(), program});
    case Autostart::State::off:
      break;
  }
  return say(words::autostartOff);
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
