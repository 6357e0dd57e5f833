// The system's files and clock under the contract suites.
#include <filesystem>
#include <memory>

#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "tests/contract/ClockContract.h"
#include "tests/contract/FileManagerContract.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::contract {
namespace {

class PosixFiles final : public FileManagerBackend {
 public:
  platform::FileManager& files() override { return files_; }
  std::filesystem::path folder() override { return folder_.path(); }

 private:
  posix::PosixFileManager files_;
  const TemporaryFolder folder_;
};

class PosixClock final : public ClockBackend {
 public:
  platform::Clock& clock() override { return clock_; }
  void pass() override {
    // Busy waiting, so that the test does not depend on how the scheduler treats a short sleep.
    const auto start = clock_.uptime();
    while (clock_.uptime() - start < std::chrono::milliseconds(3)) {
    }
  }

 private:
  posix::SystemClock clock_;
};

INSTANTIATE_TEST_SUITE_P(Posix, FileManagerContract, (only<FileManagerBackend, PosixFiles>("Posix")),
                         nameOfParameter<FileManagerBackend>);
INSTANTIATE_TEST_SUITE_P(Posix, ClockContract, (only<ClockBackend, PosixClock>("Posix")),
                         nameOfParameter<ClockBackend>);

}  // namespace
}  // namespace tavelo::contract
