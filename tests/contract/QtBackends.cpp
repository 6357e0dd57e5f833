// The Qt backends under the contract suites, on Qt's own event loop.

#include <memory>

#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "tests/contract/MainQueueContract.h"
#include "tests/platform/qt/OffscreenApplication.h"

namespace tavelo::contract {
namespace {

class QtQueue final : public MainQueueBackend {
 public:
  QtQueue() { offscreenApplication(); }
  platform::MainQueue& queue() override { return queue_; }
  platform::Clock& clock() override { return clock_; }

 private:
  posix::SystemClock clock_;
  qt::QtMainQueue queue_{clock_};
};

INSTANTIATE_TEST_SUITE_P(Qt, MainQueueContract, (only<MainQueueBackend, QtQueue>("Qt")),
                         nameOfParameter<MainQueueBackend>);

}  // namespace
}  // namespace tavelo::contract
