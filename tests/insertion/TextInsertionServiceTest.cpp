#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/insertion/TextInsertionFixture.h"

namespace tavelo {
namespace {

using platform::AXRange;
using platform::EventTapLocation;
using simulated::FieldBehaviour;
using testing::ElementsAre;
using testing::IsEmpty;

using TextInsertionServiceTest = TextInsertionFixture;

TEST_F(TextInsertionServiceTest, FieldThatTakesSelectedTextNeedsNothingElse) {
  auto& page = field({}, "🌸 nháp 🌸");
  page.select(3, 4);
  service_->insert("xống", target(page));
  EXPECT_EQ(page.value(), "🌸 xống 🌸");
  EXPECT_EQ(page.selection(), (AXRange{7, 0}));
  wait(10);
  EXPECT_FALSE(pasteboardTouched());
  EXPECT_THAT(desktop_.keyboard().posts(), IsEmpty());
  EXPECT_EQ(editor_.activations(), 0);
}

TEST_F(TextInsertionServiceTest, EmptyTextTouchesNothing) {
  auto& page = field(FieldBehaviour::pasteOnly(), "giữ");
  service_->insert("", target(page));
  service_->insert("", std::nullopt);
  wait(10);
  EXPECT_EQ(page.value(), "giữ");
  EXPECT_FALSE(pasteboardTouched());
  EXPECT_EQ(desktop_.accessibility().calls(), 0);
}

TEST_F(TextInsertionServiceTest,
       FieldThatTakesItsWholeValueOnlyGetsTheTextForTheSelectionAndTheCaretBehindIt) {
  const struct {
    const char* name;
    std::string value;
    AXRange reported;
    std::string text;
    std::string expected;
    std::int64_t caret;
  } cases[] = {
      {"inside", "abcdefgh", {2, 3}, "XY", "abXYfgh", 4},
      {"beyond the end", "abc", {9, 4}, "XY", "abcXY", 5},
      {"length beyond the end", "abc", {1, 99}, "XY", "aXY", 3},
      {"negative", "abc", {-5, -5}, "XY", "XYabc", 2},
      {"behind an emoji", "🌸🌸", {2, 0}, "ế🌸", "🌸ế🌸🌸", 5},
      {"ill-formed value", "a\xFF!", {2, 0}, "X", "a\uFFFDX!", 3},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    auto behaviour = FieldBehaviour::valueOnly();
    behaviour.rangeReading = simulated::RangeReading::given;
    behaviour.givenRange = each.reported;
    auto& page = field(behaviour, each.value);
    service_->insert(each.text, target(page));
    EXPECT_EQ(page.value(), each.expected);
    EXPECT_EQ(page.selection(), (AXRange{each.caret, 0}));
  }
  wait(10);
  EXPECT_FALSE(pasteboardTouched());
}

TEST_F(TextInsertionServiceTest, RefusedCaretStillCountsAsInserted) {
  auto behaviour = FieldBehaviour::valueOnly();
  behaviour.selectedTextRange = simulated::WriteBehaviour::refuses;
  auto& page = field(behaviour, "a");
  service_->insert("b", target(page));
  wait(10);
  EXPECT_EQ(page.value(), "ab");
  EXPECT_FALSE(pasteboardTouched());
}

TEST_F(TextInsertionServiceTest, PasteRouteFollowsItsTimetable) {
  auto& terminal = field(FieldBehaviour::terminal());
  const auto where = target(terminal);
  browser_.bringToFront();
  // The chord must not have it.
  desktop_.keyboard().press(simulated::Key::shift);
  service_->insert("lệnh", where);
  EXPECT_EQ(pasteboard().string(), "lệnh");
  EXPECT_EQ(editor_.activations(), 1);
  EXPECT_EQ(desktop_.workspace().frontmost(), &browser_) << "an activation takes a moment";
  wait(0.4499);
  EXPECT_THAT(desktop_.keyboard().posts(), IsEmpty());
  wait(0.0001);
  EXPECT_EQ(terminal.value(), "lệnh");

  std::vector<std::string> routes;
  for (const auto& post : desktop_.keyboard().posts()) {
    EXPECT_EQ(post.event.keyCode, platform::keycodes::v);
    EXPECT_EQ(post.event.flags, platform::keyflags::command);
    EXPECT_EQ(post.process.value_or(editor_.processIdentifier()), editor_.processIdentifier());
    const std::string route = post.process                             ? "process"
                              : post.location == EventTapLocation::hid ? "hid"
                                                                       : "session";
    routes.push_back(route + (post.event.type == platform::KeyEventType::keyDown ? " down" : " up"));
  }
  EXPECT_THAT(routes,
              ElementsAre("process down", "process up", "hid down", "hid up", "session down", "session up"));
  wait(3.5499);
  EXPECT_EQ(pasteboard().string(), "lệnh");
  wait(0.0001);
  EXPECT_EQ(pasteboard().string(), "của người dùng");
}

TEST_F(TextInsertionServiceTest, ElementFocusedAtPasteTimeIsTriedBeforeTheKeystroke) {
  auto& closed = field({});
  const auto where = target(closed);
  closed.close();
  auto& next = editor_.addField("khác");
  editor_.focus(&next);
  service_->insert("chữ", where);
  wait(0.45);
  EXPECT_EQ(next.value(), "chữ");
  next.setValue("người dùng xoá");
  auto& bar = editor_.addMenuBar(simulated::MenuLanguage::vietnamese);
  wait(10);
  EXPECT_THAT(desktop_.keyboard().posts(), IsEmpty());
  EXPECT_THAT(bar.presses(), IsEmpty()) << "and nothing is checked";
  EXPECT_EQ(pasteboard().string(), "của người dùng");
}

TEST_F(TextInsertionServiceTest, WithoutTargetThePasteGoesToWhateverIsInFront) {
  auto& page = field(FieldBehaviour::pasteOnly());
  auto& bar = editor_.addMenuBar(simulated::MenuLanguage::english);
  editor_.setSwallowsKeys(true);
  service_->insert("chữ", std::nullopt);
  wait(10);
  EXPECT_EQ(page.value(), "");
  EXPECT_THAT(bar.presses(), IsEmpty()) << "no application, no menu";
  EXPECT_EQ(desktop_.keyboard().posts().size(), 4U);

  editor_.setSwallowsKeys(false);
  service_->insert("chữ", FocusTarget{});
  wait(10);
  EXPECT_EQ(page.value(), "chữ");
  EXPECT_EQ(editor_.activations(), 0);
}

TEST_F(TextInsertionServiceTest, DeadTargetIsNeitherActivatedNorPostedTo) {
  const auto where = target(field(FieldBehaviour::terminal()));
  auto& other = browser_.addField("địa chỉ", FieldBehaviour::terminal());
  editor_.terminate();
  browser_.bringToFront();
  service_->insert("chữ", where);
  wait(10);
  EXPECT_EQ(editor_.activations(), 0);
  EXPECT_EQ(desktop_.keyboard().posts().size(), 4U);
  EXPECT_EQ(other.value(), "chữ");
  EXPECT_EQ(pasteboard().string(), "của người dùng");
}

TEST_F(TextInsertionServiceTest, NewerInsertionSupersedesTheWaitingStepsButNotTheRestores) {
  auto& terminal = field(FieldBehaviour::terminal());
  service_->insert("một", target(terminal));
  wait(0.3);
  service_->insert("hai", target(terminal));
  wait(1);
  EXPECT_EQ(terminal.value(), "hai");
  EXPECT_EQ(desktop_.keyboard().posts().size(), 6U);
  wait(2.69);
  EXPECT_EQ(pasteboard().string(), "hai");
  wait(0.01);
  EXPECT_EQ(pasteboard().string(), "của người dùng");
  wait(0.3);
  EXPECT_EQ(pasteboard().string(), "một") << "the pasteboard's contents when the second began";
}

TEST_F(TextInsertionServiceTest, EveryTypeComesBackAndTypesWithoutDataAreLeftOut) {
  pasteboard().copy(
      {{{"public.html", "<b>a</b>"}, {"public.png", std::nullopt}, {"public.utf8-plain-text", "a"}},
       {{"public.tiff", std::string("\0\x01", 2)}}});
  service_->insert("chữ", target(field(FieldBehaviour::terminal())));
  pasteboard().copy("người dùng chép giữa chừng");
  wait(4);
  using Item = simulated::SimulatedPasteboard::Item;
  EXPECT_THAT(pasteboard().items(),
              ElementsAre(Item{{"public.html", "<b>a</b>"}, {"public.utf8-plain-text", "a"}},
                          Item{{"public.tiff", std::string("\0\x01", 2)}}));
}

TEST_F(TextInsertionServiceTest, ServiceThatIsGonePastesNothingButRestores) {
  auto& terminal = field(FieldBehaviour::terminal());
  service_->insert("chữ", target(terminal));
  service_.reset();
  wait(4);
  EXPECT_THAT(desktop_.keyboard().posts(), IsEmpty());
  EXPECT_EQ(pasteboard().string(), "của người dùng");
}

TEST_F(TextInsertionServiceTest, EventsThatCannotBeMadeAreSkipped) {
  desktop_.keyboard().setRefusesEvents(true, false);
  service_->insert("chữ", target(field(FieldBehaviour::terminal())));
  wait(1);
  for (const auto& post : desktop_.keyboard().posts())
    EXPECT_EQ(post.event.type, platform::KeyEventType::keyUp);
  EXPECT_EQ(desktop_.keyboard().posts().size(), 3U);
}

TEST_F(TextInsertionServiceTest, HungTargetCostsTwoBoundedCallsAndFallsThrough) {
  auto& page = field({});
  const auto where = target(page);
  editor_.hang();
  service_->insert("chữ", where);
  EXPECT_EQ(desktop_.loop().uptime(), platform::toUptime(platform::Seconds{0.5}));
  EXPECT_EQ(pasteboard().string(), "chữ");
}

using TextInsertionServiceDeathTest = TextInsertionServiceTest;

TEST_F(TextInsertionServiceDeathTest, CallOffTheMainThreadStopsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(std::thread([this] { service_->insert("chữ", std::nullopt); }).join(), "off the main thread");
  std::thread([this] { service_->insert("", std::nullopt); }).join();
}

TEST_F(TextInsertionServiceTest, ValueIsNotWrittenWhileTheSelectionIsUnreadable) {
  auto behaviour = FieldBehaviour::valueOnly();
  behaviour.rangeReading = simulated::RangeReading::absent;
  auto& page = field(behaviour, "của người dùng");
  service_->insert("chữ", target(page));
  EXPECT_EQ(page.value(), "của người dùng");
  EXPECT_TRUE(pasteboardTouched());
}

}  // namespace
}  // namespace tavelo
