#pragma once

#include <functional>
#include <string>

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/ProgramFile.h"

namespace tavelo {

/// Tells the user when the running program was upgraded or removed on disk, and restarts it on request, never
/// in the middle of a dictation. Main thread.
class ProgramRenewal final {
 public:
  /// What it needs of the program around it.
  struct Program {
    /// What became of the program's file.
    std::function<platform::ProgramFile()> file;
    /// Whether a dictation is under way, or a text of the user's is still on its way.
    std::function<bool()> isBusy;
    /// Tells the user of an upgrade and offers a restart, or of a removal.
    std::function<void()> tellReplaced;
    std::function<void()> tellRemoved;
    /// Quits, and starts what stands in the program's place.
    std::function<void()> startAgain;
  };

  ProgramRenewal(platform::MainQueue& mainQueue, Program program);

  /// Something changed where the file is. Looks at the file when the package manager has had time to finish,
  /// and tells each change once.
  void somethingChanged();

  /// Starts the program again as soon as it is not busy. Does nothing if its file is gone by then.
  void restart();

 private:
  void look();
  void startAgainWhenIdle();

  platform::MainQueue& mainQueue_;
  Program program_;
  platform::ProgramFile told_ = platform::ProgramFile::unchanged;
  bool willLook_ = false;
  bool restarting_ = false;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
