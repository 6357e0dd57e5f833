// The system's files and clock under the contract suites.
#include <filesystem>
#include <memory>
#include <string>

#include <stdlib.h>

#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "tests/contract/ClockContract.h"
#include "tests/contract/FileManagerContract.h"

namespace tavelo::contract {
namespace {

class PosixFiles final : public FileManagerBackend {
 public:
  PosixFiles() {
    std::string name = (std::filesystem::temp_directory_path() / "tavelo-contract-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~PosixFiles() override { std::filesystem::remove_all(folder_); }
  platform::FileManager& files() override { return files_; }
  std::filesystem::path folder() override { return folder_; }

 private:
  posix::PosixFileManager files_;
  std::filesystem::path folder_;
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

INSTANTIATE_TEST_SUITE_P(Posix, FileManagerContract,
                         testing::Values(BackendParameter<FileManagerBackend>{
                             "Posix", [] { return std::make_unique<PosixFiles>(); }}),
                         nameOfParameter<FileManagerBackend>);
INSTANTIATE_TEST_SUITE_P(Posix, ClockContract,
                         testing::Values(BackendParameter<ClockBackend>{
                             "Posix", [] { return std::make_unique<PosixClock>(); }}),
                         nameOfParameter<ClockBackend>);

}  // namespace
}  // namespace tavelo::contract
