#include <QVariant>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/accessibility/AtspiElement.h"
#include "platform/simulated/VirtualTimeLoop.h"
#include "tests/platform/linux/FakeToolkit.h"
#include "tests/platform/linux/NoWindows.h"
#include "tests/platform/recognizer/CountedNotifications.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::AXError;

/// Window 1 is the field's. The user is there unless a test says otherwise.
class TwoWindows final : public NoWindows {
 public:
  std::optional<WindowIdentifier> activeWindow() override { return active; }
  std::optional<platform::ProcessIdentifier> process(WindowIdentifier window) override {
    if (window == noWindow) return std::nullopt;
    return window == 1 ? ::getpid() : ::getppid();
  }
  bool activate(WindowIdentifier window) override {
    if (comesToFront) active = window;
    return true;
  }
  WindowIdentifier active = 1;
  bool comesToFront = true;
};

/// The field refuses to be written. It is in the process of this test.
class FieldReturnTest : public testing::Test {
 protected:
  void SetUp() override {
    if (toolkit_ == nullptr) GTEST_SKIP() << "no dbus-daemon here";
    toolkit_->reset(U"một hai", 4, 7);
    setStates(showing);
    toolkit_->answer("GrabFocus", [this](const auto&) {
      // As a GTK entry does.
      toolkit_->start = 0;
      toolkit_->end = 7;
      return QVariantList{true};
    });
    toolkit_->answer("SetSelection", [this](const QVariantList& selection) {
      toolkit_->start = selection[1].toInt();
      toolkit_->end = selection[2].toInt();
      return QVariantList{true};
    });
    accessibility_ =
        std::make_unique<AtspiAccessibility>(loop_, loop_, windows_, notifications_, [] { return true; });
    accessibility_->onNowhere = [this](auto) { ++told_; };
    field_ = std::make_shared<AtspiElement>(toolkit_->field());
  }
  void setStates(quint32 states) {
    toolkit_->answerAlways("GetState", {QVariant::fromValue(QList<quint32>{states, 0})});
  }
  void refuseWrite() {
    EXPECT_NE(accessibility_->setAttributeValue(field_, platform::ax::selectedText, "ba"), AXError::success);
  }
  void pass(std::chrono::milliseconds time) { loop_.runUntil(loop_.uptime() + time); }

  static constexpr quint32 showing = 1U << 25U;
  static constexpr quint32 focused = 1U << 12U;
  static constexpr quint32 hidden = 0;
  FakeToolkit* toolkit_ = FakeToolkit::instance();
  simulated::VirtualTimeLoop loop_;
  TwoWindows windows_;
  CountedNotifications notifications_;
  int told_ = 0;
  std::unique_ptr<AtspiAccessibility> accessibility_;
  platform::AXUIElementRef field_;
};

TEST_F(FieldReturnTest, FieldThatRefusedTheTextGetsTheFocusWithItsSelectionAsItWas) {
  refuseWrite();
  accessibility_->cameToFront(::getpid(), 1);
  EXPECT_EQ(toolkit_->calls("GrabFocus"), 1);
  EXPECT_EQ(toolkit_->start, 4);
  EXPECT_EQ(toolkit_->end, 7);
  EXPECT_TRUE(accessibility_->mayPaste());
  EXPECT_EQ(told_, 0);
}

TEST_F(FieldReturnTest, FocusStaysWhereItIsUnlessTheFieldOfThatApplicationRefusedTheTextJustBefore) {
  accessibility_->cameToFront(::getpid(), 1);
  refuseWrite();
  accessibility_->cameToFront(::getppid(), 2);
  refuseWrite();
  pass(std::chrono::milliseconds(450));
  accessibility_->cameToFront(::getpid(), 1);
  setStates(focused);
  refuseWrite();
  accessibility_->cameToFront(::getpid(), 1);
  setStates(1U << 7U);  // editable
  EXPECT_EQ(accessibility_->setAttributeValue(field_, platform::ax::selectedText, "ba"), AXError::success);
  accessibility_->cameToFront(::getpid(), 1);
  toolkit_->answerAlways("GetState", {});
  refuseWrite();
  accessibility_->cameToFront(::getpid(), 1);
  EXPECT_EQ(toolkit_->calls("GrabFocus"), 0);
  EXPECT_TRUE(accessibility_->mayPaste());
}

TEST_F(FieldReturnTest, NothingIsPastedAnywhereWhileTheFieldIsOutOfSight) {
  setStates(hidden);
  refuseWrite();
  accessibility_->cameToFront(::getpid(), 1);
  pass(std::chrono::milliseconds(450));
  platform::AXValue value;
  EXPECT_EQ(accessibility_->copyAttributeValue(accessibility_->createSystemWide(),
                                               platform::ax::focusedUIElement, value),
            AXError::noValue);
  EXPECT_FALSE(accessibility_->mayPaste());
  pass(std::chrono::milliseconds(350));
  // The menu's turn.
  accessibility_->cameToFront(::getpid(), 1);
  toolkit_->answerAlways("NActions", {propertyValue(1)});
  setStates(showing);
  EXPECT_NE(accessibility_->performAction(field_, platform::ax::press), AXError::success);
  EXPECT_EQ(toolkit_->calls("NActions"), 0) << "the user was told to paste";
  EXPECT_EQ(told_, 1);
  pass(std::chrono::milliseconds(300));
  EXPECT_TRUE(accessibility_->mayPaste()) << "the next dictation";
  EXPECT_EQ(toolkit_->calls("GrabFocus"), 0);
}

TEST_F(FieldReturnTest, FieldThatShowsOnceItsWindowIsInFrontIsPastedInto) {
  setStates(hidden);
  refuseWrite();
  accessibility_->cameToFront(::getpid(), 1);
  setStates(showing);
  pass(std::chrono::milliseconds(450));
  EXPECT_TRUE(accessibility_->mayPaste());
  EXPECT_EQ(toolkit_->calls("GrabFocus"), 1);
  EXPECT_EQ(told_, 0);
}

TEST_F(FieldReturnTest, FieldInAPartThatDoesNotShowIsOutOfSightWhateverItClaims) {
  struct Case {
    const char* what;
    quint32 claims, around;
    quint32 outermostRole;
    bool mayPaste;
  };
  constexpr quint32 web = 95;
  constexpr quint32 frame = 23;
  constexpr quint32 root = 75;
  for (const auto& each : {Case{"a page that shows", focused, showing, root, true},
                           Case{"scrolled away, with its surroundings", focused, hidden, frame, true},
                           Case{"Firefox's tab", showing, hidden, frame, false},
                           Case{"Chromium's tab", focused | showing, showing, web, false},
                           Case{"a tree that ends at a window", focused, showing, frame, true}}) {
    const int told = told_;
    toolkit_->answer("Parent", [&](const QVariantList&) {
      // The outermost of the elements has none.
      const bool isOutermost = toolkit_->path == "/outer";
      return QVariantList{propertyValue(
          QVariant::fromValue(isOutermost ? ElementReference{"", "/org/a11y/atspi/null"}
                                          : ElementReference{toolkit_->field().service, "/outer"}))};
    });
    toolkit_->answer("GetRole", [&](const QVariantList&) {
      return QVariantList{toolkit_->path == "/outer" ? each.outermostRole : 61U};
    });
    toolkit_->answer("GetState", [&](const QVariantList&) {
      const quint32 states = toolkit_->path == "/outer" ? each.around : each.claims;
      return QVariantList{QVariant::fromValue(QList<quint32>{states, 0})};
    });
    refuseWrite();
    accessibility_->cameToFront(::getpid(), 1);
    EXPECT_EQ(accessibility_->mayPaste(), each.mayPaste) << each.what;
    EXPECT_EQ(told_ - told, each.mayPaste ? 0 : 1) << each.what;
  }
}

TEST_F(FieldReturnTest, WindowThatTheUserHasLeftComesBackForItsPasteAndNoOther) {
  accessibility_->cameToFront(::getpid(), 1);
  windows_.active = 2;
  pass(std::chrono::milliseconds(450));
  EXPECT_TRUE(accessibility_->mayPaste());
  EXPECT_EQ(windows_.active, 1U);
  windows_.active = 2;
  EXPECT_TRUE(accessibility_->mayPaste());
  EXPECT_EQ(windows_.active, 2U);
}

TEST_F(FieldReturnTest, NothingIsPastedWhenTheWindowStaysBehind) {
  accessibility_->cameToFront(::getpid(), 1);
  windows_.active = 2;
  windows_.comesToFront = false;
  pass(std::chrono::milliseconds(450));
  EXPECT_FALSE(accessibility_->mayPaste());
  EXPECT_FALSE(accessibility_->mayPaste());
  EXPECT_EQ(told_, 1);
}

TEST_F(FieldReturnTest, TextForAnApplicationThatIsGoneGoesNowhere) {
  windows_.active = 2;
  accessibility_->cameToFront(1, noWindow);
  platform::AXValue found;
  EXPECT_EQ(accessibility_->copyAttributeValue(accessibility_->createSystemWide(),
                                               platform::ax::focusedUIElement, found),
            AXError::noValue);
  EXPECT_FALSE(accessibility_->mayPaste());
  EXPECT_EQ(told_, 1);
}

}  // namespace
}  // namespace tavelo::linuxdesktop
