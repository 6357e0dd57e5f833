#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/ProgramRenewal.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo {
namespace {

using platform::ProgramFile;
using platform::Seconds;
using testing::ElementsAre;

class ProgramRenewalTest : public testing::Test {
 protected:
  void run(double seconds) { desktop.loop().advance(Seconds{seconds}); }
  /// A package manager changes some files, this one among them.
  void become(ProgramFile state) {
    renewal.somethingChanged();
    file = state;
    renewal.somethingChanged();
    run(5);
  }

  simulated::SimulatedDesktop desktop;
  ProgramFile file = ProgramFile::unchanged;
  bool busy = false;
  std::vector<std::string> done;
  ProgramRenewal renewal{platform::current().mainQueue,
                         {.file = [this] { return file; },
                          .isBusy = [this] { return busy; },
                          .tellReplaced = [this] { done.emplace_back("replaced"); },
                          .tellRemoved = [this] { done.emplace_back("removed"); },
                          .startAgain = [this] { done.emplace_back("start"); }}};
};

TEST_F(ProgramRenewalTest, EachChangeIsToldOnceAndAGapBetweenTwoFilesIsNone) {
  become(ProgramFile::unchanged);
  renewal.somethingChanged();
  file = ProgramFile::removed;
  run(1);
  become(ProgramFile::replaced);
  become(ProgramFile::replaced);
  become(ProgramFile::removed);
  become(ProgramFile::replaced);
  EXPECT_THAT(done, ElementsAre("replaced", "removed", "replaced"));
}

TEST_F(ProgramRenewalTest, RestartWaitsForTheEndOfWorkAndNeedsAProgram) {
  busy = true;
  renewal.restart();
  renewal.restart();
  run(60);
  EXPECT_THAT(done, ElementsAre());
  busy = false;
  run(1);
  EXPECT_THAT(done, ElementsAre("start"));
  file = ProgramFile::removed;
  renewal.restart();
  run(1);
  EXPECT_THAT(done, ElementsAre("start"));
  file = ProgramFile::replaced;
  renewal.restart();
  // The command that asked still waits for its answer.
  EXPECT_THAT(done, ElementsAre("start"));
  run(1);
  EXPECT_THAT(done, ElementsAre("start", "start"));
}

}  // namespace
}  // namespace tavelo
