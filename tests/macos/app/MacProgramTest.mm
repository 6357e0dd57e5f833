// The program for a Mac with its real services and windows, on the simulated desktop and AppKit's fakes.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <future>

#include <gmock/gmock.h>

#include "app/MacProgram.h"
#include "app/MacWiring.h"
#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/MacDiagnosis.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/macos/fakes/AppKitFakes.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::Key;
using simulated::RecognitionStep;

simulated::SimulatedDesktop* desktop = nullptr;

}  // namespace

struct MacWiring::Backends {
  Backends() {
    desktop = &simulated;
    fakes::record("platform");
  }
  simulated::SimulatedDesktop simulated;
};
MacWiring::MacWiring() : backends_(std::make_unique<Backends>()) {}
MacWiring::~MacWiring() = default;

// What the commands find on this Mac.
std::filesystem::path theFolder;
MacFacts theFacts;
std::filesystem::path instanceFolder() { return theFolder; }
std::unique_ptr<platform::FileManager> makeCommandFileManager() {
  return std::make_unique<posix::PosixFileManager>();
}
MacFacts examineMac() { return theFacts; }

namespace {

class MacProgramTest : public fakes::FakeFrameworks {
 protected:
  MacProgramTest() {
    screen_ = fakes::screen({{0, 0}, {1440, 900}}, {{0, 0}, {1440, 875}});
    fakes::serveApplication(@[ screen_ ], screen_);
    fakes::answer("setDelegate:", [this](fakes::Call& call) {
      applicationDelegate_ = (__bridge id<NSApplicationDelegate>)call.argument<void*>(0);
    });
    fakes::answerWith("processInfo", [NSProcessInfo new]);
    fakes::answer("setMainMenu:",
                  [this](fakes::Call& call) { mainMenu_ = (__bridge NSMenu*)call.argument<void*>(0); });
    fakes::answer("runModal", [this](fakes::Call& call) {
      alerts_.push_back(fakes::utf8(((__bridge NSAlert*)call.receiver).informativeText));
    });
    program_ = std::make_unique<MacProgram>();
  }
  ~MacProgramTest() override {
    program_.reset();
    desktop = nullptr;
  }
  void finishLaunching() { [applicationDelegate_ applicationDidFinishLaunching:[NSNotification new]]; }
  std::string menuTitle(NSUInteger row) const {
    return fakes::utf8(fakes::statusItems().front().menu.itemArray[row].title);
  }
  void choose(NSUInteger row) const {
    NSMenuItem* const item = fakes::statusItems().front().menu.itemArray[row];
    fakes::press(item.target, item.action);
  }

  NSScreen* screen_;
  NSMenu* mainMenu_ = nil;
  id<NSApplicationDelegate> applicationDelegate_ = nil;
  std::vector<std::string> alerts_;
  std::unique_ptr<MacProgram> program_;
};

std::vector<std::string> callsOf(const std::string& receiver) {
  auto calls = fakes::takeCalls();
  std::erase_if(calls, [&](const auto& each) { return each.find(receiver) == std::string::npos; });
  return calls;
}

TEST_F(MacProgramTest, StartsInOrderAndShowsNothingBeforeLaunchingHasFinished) {
  fakes::answer("run", [this](fakes::Call&) { finishLaunching(); });
  EXPECT_TRUE(fakes::statusItems().empty());
  for (NSWindow* window : fakes::windows()) EXPECT_FALSE(window.visible);
  EXPECT_TRUE(desktop->accessibility().isProcessTrusted());
  program_->run();
  const auto calls = fakes::takeCalls();
  const auto indexOf = [&](const std::string& words) {
    const auto found =
        std::ranges::find_if(calls, [&](const auto& each) { return each.find(words) != std::string::npos; });
    EXPECT_NE(found, calls.end()) << words;
    return found - calls.begin();
  };
  EXPECT_LT(indexOf("sharedApplication"), indexOf("setDelegate:<TaveloApplicationDelegate>"));
  EXPECT_LT(indexOf("platform"), indexOf("setDelegate:"));
  EXPECT_LT(indexOf("setDelegate:"), indexOf("setActivationPolicy:1"));
  EXPECT_LT(indexOf("setActivationPolicy:1"), indexOf("-[NSApplication run]"));
  EXPECT_EQ(fakes::statusItems().size(), 1U);
  EXPECT_EQ(menuTitle(5), "Accessibility: Đã cấp");
  EXPECT_TRUE(alerts_.empty());
  indexOf("beginActivityWithOptions:15728639 reason:");
}

TEST_F(MacProgramTest, EditMenuGivesOurWindowsTheirKeys) {
  ASSERT_EQ(mainMenu_.itemArray.count, 2U);
  EXPECT_EQ(mainMenu_.itemArray[0].submenu.itemArray.count, 0U);
  std::string keys;
  for (NSMenuItem* item in mainMenu_.itemArray[1].submenu.itemArray) {
    const auto* const action = reinterpret_cast<const fakes::Selector*>(item.action);
    keys += item.separatorItem ? "-" : action->name + fakes::utf8(item.keyEquivalent);
    keys += " ";
    if (!item.separatorItem) EXPECT_EQ(item.keyEquivalentModifierMask, 1U << 20U);
    EXPECT_EQ(item.target, nil) << "the view with the focus";
  }
  EXPECT_EQ(keys, "undo:z redo:Z - cut:x copy:c paste:v selectAll:a ");
}

TEST_F(MacProgramTest, DictatesIntoTheFieldAndEndsWhenAsked) {
  auto& field = desktop->openApplication("Soạn thảo", "org.example.editor").addField("trang");
  desktop->speech().setDefaultScript({{RecognitionStep::partial(Seconds{0.5}, "xin chào dấu phẩy nam")}});
  finishLaunching();
  desktop->keyboard().press(Key::function);
  desktop->advance(Seconds{1.5});
  EXPECT_EQ(menuTitle(0), "Dừng và chèn văn bản");
  desktop->keyboard().release(Key::function);
  desktop->advance(Seconds{5});
  EXPECT_EQ(field.value(), "Xin chào, nam");
  EXPECT_EQ(menuTitle(0), "Bắt đầu nghe");
  fakes::takeCalls();
  choose(10);
  EXPECT_THAT(callsOf("NSApplication"), testing::ElementsAre("-[NSApplication terminate:nil]"));
  raise(SIGTERM);
  EXPECT_TRUE(callsOf("NSApplication").empty()) << "not inside the handler";
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  std::vector<std::string> calls;
  while (calls.empty() && std::chrono::steady_clock::now() < deadline) {
    desktop->advance(Seconds{0.001});
    calls = callsOf("NSApplication");
  }
  EXPECT_THAT(calls, testing::ElementsAre("-[NSApplication terminate:nil]"));
}

TEST_F(MacProgramTest, DoesWhatAnotherStartAsksButNotBeforeLaunchingHasFinished) {
  program_->receive(InstanceMessage::insertLastText);
  desktop->advance(Seconds{1});
  EXPECT_TRUE(alerts_.empty());
  finishLaunching();
  EXPECT_TRUE(alerts_.empty()) << "inside the launch";
  desktop->advance(Seconds{1});
  EXPECT_THAT(alerts_, testing::ElementsAre("Chưa có văn bản nào được tạo trong phiên này."));
  const auto titleAfter = [&](InstanceMessage message) {
    program_->receive(message);
    desktop->advance(Seconds{0.3});
    return menuTitle(0);
  };
  EXPECT_EQ(titleAfter(InstanceMessage::startListening), "Dừng và chèn văn bản");
  EXPECT_EQ(titleAfter(InstanceMessage::toggleListening), "Bắt đầu nghe");
  EXPECT_EQ(titleAfter(InstanceMessage::toggleListening), "Dừng và chèn văn bản");
  EXPECT_EQ(titleAfter(InstanceMessage::cancelListening), "Bắt đầu nghe");
  fakes::takeCalls();
  program_->receive(InstanceMessage::showMenu);
  desktop->advance(Seconds{0.1});
  EXPECT_FALSE(callsOf("NSMenu").empty()) << "the menu is opened";
}

/// The commands of a Mac. `runStart` makes the program.
class MacCommandsTest : public MacProgramTest {
 protected:
  MacCommandsTest() {
    program_.reset();
    theFolder = folder_.path() / "Tavelo";
    theFacts = {};
  }
  /// What a command prints, and its exit code. The main loop runs meanwhile.
  static std::string run(ExitCode (*command)()) {
    testing::internal::CaptureStdout();
    auto ended = std::async(std::launch::async, command);
    while (ended.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
      desktop->advance(Seconds{0.001});
    }
    const auto code = static_cast<int>(ended.get());
    return testing::internal::GetCapturedStdout() + std::to_string(code);
  }
  static ExitCode examine() { return runDoctor({}); }

  const TemporaryFolder folder_;
};

TEST_F(MacCommandsTest, SecondStartAndDoctorSpeakToTheRunningProgram) {
  using testing::AllOf, testing::HasSubstr, testing::StartsWith;
  std::string second, broken, fine;
  fakes::answer("run", [&](fakes::Call&) {
    finishLaunching();
    fakes::takeCalls();
    second = run(runStart);
    desktop->advance(Seconds{0.1});
    EXPECT_FALSE(callsOf("NSMenu").empty()) << "the menu is opened";
    broken = run(examine);
    theFacts.accessibilityTrusted = theFacts.hasSoundInput = true;
    theFacts.hasRecognizer = theFacts.recognizerIsAvailable = true;
    fine = run(examine);
  });
  EXPECT_EQ(runStart(), ExitCode::done);
  EXPECT_EQ(second, "Tavelo is already running; its menu is open.\n0");
  EXPECT_THAT(broken, AllOf(StartsWith("broken   accessibility"), testing::EndsWith("1")));
  EXPECT_THAT(fine, AllOf(StartsWith("fine     accessibility"), testing::EndsWith("0")));
  testing::internal::CaptureStdout();
  EXPECT_EQ(examine(), ExitCode::done);
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              AllOf(StartsWith("Tavelo is not running."), HasSubstr("terminal"), HasSubstr("recogniser")));
}

}  // namespace
}  // namespace tavelo
