// The simulated desktop under the contract suites. Every other backend has a file like this one.

#include <memory>
#include <string>

#include "platform/simulated/SimulatedDesktop.h"
#include "tests/contract/ClockContract.h"
#include "tests/contract/FileManagerContract.h"
#include "tests/contract/KeyboardContract.h"
#include "tests/contract/MainQueueContract.h"
#include "tests/contract/PasteboardContract.h"

namespace tavelo::contract {
namespace {

using simulated::DesktopOptions;
using simulated::SimulatedDesktop;
using Time = DesktopOptions::Time;

/// A desktop of its own for each test.
template <class Backend>
class Simulated : public Backend {
 public:
  explicit Simulated(Time time) : desktop_({.time = time}) {}

 protected:
  SimulatedDesktop desktop_;
};

class SimulatedQueue final : public Simulated<MainQueueBackend> {
 public:
  using Simulated::Simulated;
  platform::MainQueue& queue() override { return platform::current().mainQueue; }
  platform::Clock& clock() override { return platform::current().clock; }
};

class SimulatedClock final : public Simulated<ClockBackend> {
 public:
  using Simulated::Simulated;
  platform::Clock& clock() override { return platform::current().clock; }
  void pass() override { desktop_.advance(platform::Seconds{0.003}); }
};

class SimulatedFiles final : public Simulated<FileManagerBackend> {
 public:
  using Simulated::Simulated;
  platform::FileManager& files() override { return platform::current().fileManager; }
  std::filesystem::path folder() override { return files().temporaryDirectory(); }
};

class SimulatedClipboard final : public Simulated<PasteboardBackend> {
 public:
  using Simulated::Simulated;
  platform::Pasteboard& pasteboard() override { return platform::current().generalPasteboard; }
  void copy(const platform::PasteboardItemContent& content) override {
    simulated::SimulatedPasteboard::Item item;
    for (const auto& each : content.representations) item.push_back({each.type, each.data});
    desktop_.pasteboard().copy({item});
  }
};

class SimulatedKeys final : public Simulated<KeyboardBackend> {
 public:
  explicit SimulatedKeys(Time time) : Simulated(time) { desktop_.pasteboard().copy("x"); }
  platform::KeyboardEvents& keyboard() override { return platform::current().keyboardEvents; }
  platform::Clock& clock() override { return platform::current().clock; }
  void moveFunctionKey(bool down) override {
    if (down) {
      desktop_.keyboard().press(simulated::Key::function);
    } else {
      desktop_.keyboard().release(simulated::Key::function);
    }
  }
  void interruptHold() override { desktop_.keyboard().interruptHold(); }
  void setOwnWindowActive(bool active) override {
    (active ? desktop_.workspace().ownApplication() : other_).bringToFront();
  }
  platform::ProcessIdentifier otherProcess() override { return other_.processIdentifier(); }
  int pastes() override { return static_cast<int>(field_.value().size()); }

 private:
  simulated::SimulatedApplication& other_ = desktop_.openApplication("Notes");
  simulated::SimulatedField& field_ = other_.addField("body");
};

template <class Contract, class Simulated>
auto bothLoops() {
  return testing::Values(
      BackendParameter<Contract>{"Virtual", [] { return std::make_unique<Simulated>(Time::virtualTime); }},
      BackendParameter<Contract>{"RealTime", [] { return std::make_unique<Simulated>(Time::realTime); }});
}

INSTANTIATE_TEST_SUITE_P(Simulated, MainQueueContract, (bothLoops<MainQueueBackend, SimulatedQueue>()),
                         nameOfParameter<MainQueueBackend>);
INSTANTIATE_TEST_SUITE_P(Simulated, ClockContract, (bothLoops<ClockBackend, SimulatedClock>()),
                         nameOfParameter<ClockBackend>);
INSTANTIATE_TEST_SUITE_P(Simulated, FileManagerContract, (bothLoops<FileManagerBackend, SimulatedFiles>()),
                         nameOfParameter<FileManagerBackend>);
INSTANTIATE_TEST_SUITE_P(Simulated, PasteboardContract, (bothLoops<PasteboardBackend, SimulatedClipboard>()),
                         nameOfParameter<PasteboardBackend>);
INSTANTIATE_TEST_SUITE_P(Simulated, KeyboardContract, (bothLoops<KeyboardBackend, SimulatedKeys>()),
                         nameOfParameter<KeyboardBackend>);

}  // namespace
}  // namespace tavelo::contract
