#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "platform/Clock.h"
#include "tests/contract/MainQueueContract.h"

namespace tavelo::contract {

class ClockBackend {
 public:
  virtual ~ClockBackend() = default;
  virtual platform::Clock& clock() = 0;
  /// Lets a few milliseconds pass.
  virtual void pass() = 0;
};

class ClockContract : public BackendTest<ClockBackend> {
 protected:
  platform::Clock& clock() { return backend().clock(); }
  void pass() { backend().pass(); }
};

}  // namespace tavelo::contract
