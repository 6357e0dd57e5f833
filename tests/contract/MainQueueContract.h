#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "platform/Clock.h"
#include "platform/MainQueue.h"

namespace tavelo::contract {

/// A main queue and a clock under test. A backend joins the suite with a class and an
/// INSTANTIATE_TEST_SUITE_P; SimulatedBackends.cpp shows how. The other suites work the same way.
class MainQueueBackend {
 public:
  virtual ~MainQueueBackend() = default;
  virtual platform::MainQueue& queue() = 0;
  virtual platform::Clock& clock() = 0;
};

template <class Backend>
struct BackendParameter {
  std::string name;
  std::function<std::unique_ptr<Backend>()> make;

  friend void PrintTo(const BackendParameter& parameter, std::ostream* out) { *out << parameter.name; }
};

template <class Backend>
std::string nameOfParameter(const testing::TestParamInfo<BackendParameter<Backend>>& info) {
  return info.param.name;
}

/// The parameter of a suite that runs against one backend.
template <class Contract, class Backend>
auto only(const char* name) {
  return testing::Values(BackendParameter<Contract>{name, [] { return std::make_unique<Backend>(); }});
}

/// A test against a new backend.
template <class Backend>
class BackendTest : public testing::TestWithParam<BackendParameter<Backend>> {
 protected:
  Backend& backend() { return *backend_; }

 private:
  const std::unique_ptr<Backend> backend_ = this->GetParam().make();
};

class MainQueueContract : public BackendTest<MainQueueBackend> {
 protected:
  void run(platform::Seconds interval) { queue().runUntil(clock().uptime() + platform::toUptime(interval)); }
  /// Runs until `condition` holds, but at most two seconds.
  bool runUntil(const std::function<bool()>& condition) {
    const auto bound = clock().uptime() + platform::toUptime(platform::Seconds{2});
    while (!condition() && clock().uptime() < bound) run(platform::Seconds{0.002});
    return condition();
  }
  platform::MainQueue& queue() { return backend().queue(); }
  platform::Clock& clock() { return backend().clock(); }
};

}  // namespace tavelo::contract
