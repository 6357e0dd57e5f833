// The run loop's main queue and the Mac's files under the contract suites.
#include <filesystem>
#include <memory>
#include <string>

#import <Foundation/Foundation.h>
#include <stdlib.h>

#include "platform/macos/MacFileManager.h"
#include "platform/macos/RunLoopMainQueue.h"
#include "platform/posix/SystemClock.h"
#include "tests/contract/FileManagerContract.h"
#include "tests/contract/MainQueueContract.h"
#include "tests/macos/fakes/Fakes.h"

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

/// The support folder is this test's own, so nothing is shared.
class MacFiles final : public FileManagerBackend {
 public:
  MacFiles() {
    std::string name = (std::filesystem::temp_directory_path() / "tavelo-contract-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    fakes::answer("defaultManager", [](fakes::Call& call) { call.give((__bridge void*)manager()); });
    fakes::answer("URLsForDirectory:inDomains:",
                  [this](fakes::Call& call) { call.give((__bridge void*)urls_); });
  }
  ~MacFiles() override {
    fakes::resetRecorder();
    std::filesystem::remove_all(folder_);
  }
  platform::FileManager& files() override { return files_; }
  std::filesystem::path folder() override { return folder_; }

 private:
  static NSFileManager* manager() {
    static NSFileManager* const manager = [NSFileManager new];
    return manager;
  }

  NSArray<NSURL*>* const urls_ = @[ [NSURL URLWithString:@"/tmp"] ];
  macos::MacFileManager files_;
  std::filesystem::path folder_;
};

INSTANTIATE_TEST_SUITE_P(RunLoop, MainQueueContract,
                         testing::Values(BackendParameter<MainQueueBackend>{
                             "RunLoop", [] { return std::make_unique<RunLoopQueue>(); }}),
                         nameOfParameter<MainQueueBackend>);
INSTANTIATE_TEST_SUITE_P(Mac, FileManagerContract,
                         testing::Values(BackendParameter<FileManagerBackend>{
                             "Mac", [] { return std::make_unique<MacFiles>(); }}),
                         nameOfParameter<FileManagerBackend>);

}  // namespace
}  // namespace tavelo::contract
