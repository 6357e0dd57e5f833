// The Qt backends under the contract suites, on Qt's own event loop and its clipboard in memory.

#include <QClipboard>
#include <QMimeData>
#include <memory>

#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtPasteboard.h"
#include "tests/contract/MainQueueContract.h"
#include "tests/contract/PasteboardContract.h"
#include "tests/qt/OffscreenApplication.h"

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

class QtClipboard final : public PasteboardBackend {
 public:
  QtClipboard() { offscreenApplication(); }
  platform::Pasteboard& pasteboard() override { return pasteboard_; }
  void copy(const platform::PasteboardItemContent& item) override {
    auto* data = new QMimeData;
    for (const auto& [type, bytes] : item.representations) {
      const bool text = type == platform::pasteboardTypeString;
      data->setData(text ? "text/plain" : QString::fromStdString(type), QByteArray::fromStdString(bytes));
    }
    QGuiApplication::clipboard()->setMimeData(data);
  }

 private:
  qt::QtPasteboard pasteboard_;
};

INSTANTIATE_TEST_SUITE_P(Qt, MainQueueContract,
                         testing::Values(BackendParameter<MainQueueBackend>{
                             "Qt", [] { return std::make_unique<QtQueue>(); }}),
                         nameOfParameter<MainQueueBackend>);
INSTANTIATE_TEST_SUITE_P(Qt, PasteboardContract,
                         testing::Values(BackendParameter<PasteboardBackend>{
                             "Qt", [] { return std::make_unique<QtClipboard>(); }}),
                         nameOfParameter<PasteboardBackend>);

}  // namespace
}  // namespace tavelo::contract
