#include <QString>

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/setup/FakeSetupDesktop.h"
#include "ui/qt/setup/KeySetup.h"
#include "ui/qt/setup/MicrophoneSetup.h"
#include "ui/qt/setup/ModelTexts.h"
#include "ui/qt/setup/RecognizerSetup.h"

namespace tavelo {
namespace {

using platform::KeyUse;
using platform::Seconds;
using simulated::Key;
using State = RecognizerCondition::State;

class SetupLinesTest : public testing::Test {
 protected:
  /// Whether the line has that mark, and that part of a sentence.
  static testing::AssertionResult says(const LineState& line, Mark mark, const char* part) {
    if (line.mark == mark && line.text.find(part) != std::string::npos) return testing::AssertionSuccess();
    return testing::AssertionFailure() << static_cast<int>(line.mark) << " " << line.text;
  }

  simulated::SimulatedDesktop desktop_;
  FakeSetupDesktop fake_;
};

TEST_F(SetupLinesTest, MicrophoneIsGreenOnceItHasHeardSomething) {
  desktop_.microphone().play(std::vector<std::int16_t>(1600, 40));
  MicrophoneSetup setup(fake_.functions);
  const auto hear = [&](double seconds) {
    desktop_.advance(Seconds{seconds});
    return setup.takeLevel();
  };
  EXPECT_LT(hear(1), MicrophoneSetup::heardLevel);
  EXPECT_TRUE(says(setup.line(), Mark::missing, "Hãy nói"));
  hear(8);
  EXPECT_TRUE(says(setup.line(), Mark::missing, "chọn micrô khác"));

  desktop_.microphone().play(std::vector<std::int16_t>(1600, -12000));
  for (const char* each : {"usb", "", "usb"}) {
    EXPECT_EQ(setup.choose(each), "");
    EXPECT_TRUE(says(setup.line(), Mark::missing, "Hãy nói vài")) << "what another microphone heard counts";
    EXPECT_GT(hear(1), 0.3);
  }
  EXPECT_TRUE(says(setup.line(), Mark::done, "nghe được"));
  fake_.problem = "read-only";
  EXPECT_EQ(setup.choose(""), "read-only");
  EXPECT_EQ(setup.chosen(), "usb");

  fake_.sources = {.sources = {}, .error = "refused"};
  hear(3);
  EXPECT_TRUE(says(setup.line(), Mark::missing, "dịch vụ âm thanh"));
  EXPECT_FALSE(desktop_.microphone().isCapturing());
  desktop_.microphone().setStartFailure("Máy bận.");
  fake_.sources = {.sources = {{"mic", "Micrô khác", true}}, .error = {}};
  hear(3);
  EXPECT_TRUE(says(setup.line(), Mark::missing, "Máy bận."));
  desktop_.microphone().setStartFailure(std::nullopt);
  hear(3);
  EXPECT_TRUE(says(setup.line(), Mark::done, "Micrô đã chọn không có ở đây"));
}

TEST_F(SetupLinesTest, KeyIsGreenOnceItWasHeldAndOnlyAKeyThatSparesTheUserIsTaken) {
  KeySetup setup(fake_.functions);
  const auto type = [&](Key key) {
    desktop_.keyboard().tap(key);
    desktop_.advance(Seconds{0.2});
  };
  EXPECT_TRUE(says(setup.line(), Mark::missing, "Hãy giữ thử Ctrl phải"));
  type(Key::a);
  EXPECT_EQ(setup.line().mark, Mark::missing);
  type(Key::function);
  EXPECT_TRUE(says(setup.line(), Mark::done, "Giữ Ctrl phải để nói"));

  // Still held from the shortcut that pressed the button: its release is no choice.
  desktop_.keyboard().press(Key::option);
  setup.choose();
  desktop_.advance(Seconds{0.1});
  desktop_.keyboard().release(Key::option);
  desktop_.advance(Seconds{0.1});
  EXPECT_TRUE(says(setup.line(), Mark::working, "Hãy nhấn phím mà"));
  const std::pair<KeyUse, const char*> refusals[] = {{KeyUse::types, "F dùng để gõ chữ"},
                                                     {KeyUse::dailyModifier, "F được dùng cùng phím khác"},
                                                     {KeyUse::commands, "F đã có việc khác"},
                                                     {KeyUse::locks, "F bật tắt"},
                                                     {KeyUse::unknown, "không gọi được tên"}};
  for (const auto& [use, reason] : refusals) {
    fake_.key = {.setting = "F", .name = "F", .use = use};
    type(Key::shift);
    EXPECT_TRUE(says(setup.line(), Mark::working, reason));
  }
  EXPECT_EQ(fake_.holdKey, "Ctrl phải");
  std::string told = "nothing";
  setup.onChosen = [&](const std::string& problem) { told = problem; };
  fake_.key = {.setting = "Pause", .name = "Pause", .use = KeyUse::free};
  type(Key::c);
  EXPECT_EQ(told, "");
  EXPECT_TRUE(says(setup.line(), Mark::missing, "Hãy giữ thử Pause")) << "another key was held";
  setup.choose();
  setup.abandon();
  type(Key::function);
  EXPECT_TRUE(says(setup.line(), Mark::done, "Pause"));
}

TEST_F(SetupLinesTest, RecognizerIsGreenWithALoadedModelOrAServerThatAnswers) {
  offscreenApplication();
  RecognizerSetup setup(fake_.functions);
  setup.examine();
  EXPECT_TRUE(says(setup.line(), Mark::missing, "Tải về"));
  fake_.recognizer.state = State::loading;
  setup.examine();
  EXPECT_TRUE(says(setup.line(), Mark::working, "nạp"));
  fake_.recognizer = {State::failed, "no tokens"};
  desktop_.advance(Seconds{5});
  EXPECT_TRUE(says(setup.line(), Mark::missing, "no tokens"));
  EXPECT_EQ(fake_.loads, 2) << "looking began to load again";

  setup.useServer("ws://cũ");
  setup.useServer("ws://mới");
  EXPECT_TRUE(says(setup.line(), Mark::working, "thử máy chủ"));
  fake_.trials[0].done("");
  EXPECT_EQ(fake_.recognizer.state, State::failed) << "an abandoned trial was taken";
  fake_.trials[1].done("refused");
  EXPECT_TRUE(says(setup.line(), Mark::missing, "no tokens"));
  EXPECT_NE(setup.failure().find("refused"), std::string::npos);
  setup.useServer("ws://mới");
  fake_.trials[2].done("");
  ASSERT_EQ(fake_.trials.size(), 4U) << "the configured server is not tried";
  fake_.trials[3].done("");
  EXPECT_TRUE(says(setup.line(), Mark::done, "ws://mới"));
  EXPECT_EQ(setup.failure(), "");
  setup.fetch(models::knownModels().front());
  EXPECT_NE(setup.failure().find("thư mục cá nhân"), std::string::npos);
  EXPECT_TRUE(setup.isUsable()) << "what works was spoilt by an attempt to replace it";
}

TEST_F(SetupLinesTest, EveryModelHasATitleForPeople) {
  for (const auto& each : models::knownModels()) {
    const auto text = textOf(each);
    EXPECT_NE(text.title, each.shortName);
    EXPECT_NE(text.facts.find(std::to_string(each.megabytes)), std::string::npos) << text.facts;
  }
  EXPECT_TRUE(says(accessibilityLine(AccessibilityCondition::on, {"Gedit", "50% Editor"}), Mark::done,
                   "Gedit, 50% Editor."));
}

}  // namespace
}  // namespace tavelo
