// The run loop's main queue under its contract suite.
#include "platform/macos/RunLoopMainQueue.h"
#include "platform/posix/SystemClock.h"
#include "tests/contract/MainQueueContract.h"

namespace tavelo::contract {
namespace {

class RunLoopQueue final : public MainQueueBackend {
 public:
  platform::MainQueue& queue() override { return queue_; }
  platform::Clock& clock() override { return clock_; }

 private:
  posix::SystemClock clock_;
  macos::RunLoopMainQueue queue_;
};

INSTANTIATE_TEST_SUITE_P(RunLoop, MainQueueContract, (only<MainQueueBackend, RunLoopQueue>("RunLoop")),
                         nameOfParameter<MainQueueBackend>);

}  // namespace
}  // namespace tavelo::contract
