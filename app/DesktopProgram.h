#pragma once

#include <QObject>
#include <memory>

#include "app/ApplicationServices.h"
#include "app/DesktopSignals.h"
#include "app/LinuxWiring.h"
#include "app/SingleInstance.h"

namespace tavelo {

/// The program on a desktop, from the application object to the end of its run loop. One in a process; main
/// thread.
///
/// The quit command, SIGTERM, SIGINT and the end of the session all end it alike: nothing is saved, a
/// dictation that runs is dropped.
class DesktopProgram final : public QObject {
 public:
  /// Makes the platform and the coordinator with its services. Needs an application object.
  DesktopProgram();

  /// Sets up the application object of this process: what it is called, and that it stays when its last
  /// window closes.
  static void describeApplication();

  /// Finishes launching from inside the run loop and returns the exit code when that has ended.
  int run();

  /// Does what a later start asks for, one hop later; so never before launching has finished.
  void receive(InstanceMessage message);

  /// The end of the session asks the application object to quit, and does not want to be kept by a window.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Before all that stands on it.
  LinuxWiring wiring_;
  DesktopSignals signals_;
  std::shared_ptr<AppDelegate<ApplicationServices>> delegate_;
};

}  // namespace tavelo
