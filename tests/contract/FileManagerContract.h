#pragma once

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

#include "platform/FileManager.h"
#include "tests/contract/MainQueueContract.h"

namespace tavelo::contract {

class FileManagerBackend {
 public:
  virtual ~FileManagerBackend() = default;
  virtual platform::FileManager& files() = 0;
  /// An existing folder that only this test uses.
  virtual std::filesystem::path folder() = 0;
};

class FileManagerContract : public BackendTest<FileManagerBackend> {
 protected:
  platform::FileManager& files() { return backend().files(); }
  std::filesystem::path folder() { return backend().folder(); }
};

}  // namespace tavelo::contract
