#include <QStandardPaths>

#include <unistd.h>

#include "app/SpeechWiring.h"
#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/Environment.h"
#include "platform/posix/ExecutableFolder.h"
#include "platform/posix/PosixFileManager.h"

namespace tavelo {

std::unique_ptr<platform::FileManager> makeCommandFileManager() {
  return std::make_unique<posix::PosixFileManager>();
}

ConfiguredSpeech makeCommandSpeech(platform::MainQueue& mainQueue) {
  return makeConfiguredSpeech(mainQueue, posix::PosixFileManager().applicationSupportDirectory(),
                              settings::Settings::ofUser());
}

std::filesystem::path instanceFolder() {
  // A command of cron's or su's lacks the variable that the program in the session has.
  const auto usual = std::filesystem::path("/run/user") / std::to_string(::getuid());
  if (platform::environmentVariable("XDG_RUNTIME_DIR").empty() && ::access(usual.c_str(), W_OK | X_OK) == 0)
    return usual;
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation).toStdString();
}

void startInThisProcess() { throw CommandFailure(posix::startInThisProcess(posix::executableFile())); }

std::optional<DesktopCommands> desktopCommands() {
  return DesktopCommands{.start = runStart,
                         .insertLast = runInsertLast,
                         .listen = runListen,
                         .doctor = runDoctor,
                         .autostart = runAutostart,
                         .others = {{"setup", language::say(language::words::aboutSetup), runSetup},
                                    {"restart", language::say(language::words::aboutRestart), runRestart}}};
}

}  // namespace tavelo
