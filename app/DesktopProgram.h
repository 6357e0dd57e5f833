#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "app/ApplicationServices.h"
#include "app/LinuxWiring.h"
#include "app/ProgramRenewal.h"
#include "app/SingleInstance.h"
#include "app/TerminationSignals.h"
#include "ui/qt/ToolkitTexts.h"

namespace tavelo {

/// The running program on a desktop: its platform, its coordinator and its run loop. One per process; main
/// thread.
///
/// The quit command, SIGTERM, SIGINT and the end of the session all end it in the same way: a running
/// dictation is dropped, and nothing is saved.
class DesktopProgram final : public QObject {
 public:
  /// Makes the platform and the coordinator with its services. Needs an application object.
  DesktopProgram();

  /// Sets the names of the application, and that it keeps running when its last window closes.
  static void describeApplication();

  /// Has `run` open the set-up window. Otherwise it does that only if there is no recogniser and nobody has
  /// configured one.
  void setUpAtStart() { setsUp_ = true; }

  /// Finishes launching inside the run loop, and returns the exit code once the loop has ended.
  int run();

  /// Whether the program is to be started again, now that `run` has returned.
  bool wantsToStartAgain() const { return startAgain_; }

  /// What became of the program's file.
  platform::ProgramFile programFile() const { return wiring_.programFile(); }

  /// Does what another start of the program asks for, one hop over the main queue later. That is never before
  /// launching has finished.
  void receive(InstanceMessage message);

  /// Forgets dictations at once; argument and result as `InstanceMessage::forgetHistory` has them.
  std::string forget(const std::string& argument);

  /// Quits at once when the end of the session asks the application object to, even with a window open.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// First, because everything else uses the platform.
  LinuxWiring wiring_;
  const ToolkitTexts toolkitTexts_;
  TerminationSignals signals_;
  bool setsUp_ = false;
  std::shared_ptr<AppDelegate<ApplicationServices>> delegate_;
  ProgramRenewal renewal_;
  bool startAgain_ = false;
};

}  // namespace tavelo
