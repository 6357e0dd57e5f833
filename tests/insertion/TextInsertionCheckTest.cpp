#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/insertion/TextInsertionFixture.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::FieldBehaviour;
using testing::ElementsAre;
using testing::IsEmpty;

/// The application swallows the keystroke, unless a test says otherwise: does the check press the menu?
class VerificationTest : public TextInsertionFixture {
 protected:
  VerificationTest() { editor_.setSwallowsKeys(true); }
  /// Whether the Paste item was pressed after `text` went to a field that then shows `shown`.
  bool menuPressed(const FieldBehaviour& behaviour, const std::string& text, const std::string& shown) {
    service_->insert(text, target(field(behaviour, shown)));
    wait(0.7999);
    EXPECT_THAT(bar_.presses(), IsEmpty());
    wait(0.0001);
    return !bar_.presses().empty();
  }
  /// Inserts "chữ" into `first`, which then loses the focus to `other`. Returns what was pressed.
  const std::vector<std::string>& pressedAfterTheFocusWentTo(simulated::SimulatedField& other,
                                                             simulated::SimulatedField& first) {
    service_->insert("chữ", target(first));
    editor_.focus(&other);
    wait(1);
    return bar_.presses();
  }

  simulated::SimulatedMenuBar& bar_ = editor_.addMenuBar(simulated::MenuLanguage::vietnamese);
};

TEST_F(VerificationTest, MissingTextIsPastedFromTheMenu) {
  EXPECT_TRUE(menuPressed(FieldBehaviour::pasteOnly(), "Việt", "việt"));
}
TEST_F(VerificationTest, CanonicallyEquivalentTextCountsAsThere) {
  EXPECT_FALSE(menuPressed(FieldBehaviour::pasteOnly(), "Việt", "x Vie\u0323\u0302t y"));
}
TEST_F(VerificationTest, LetterIsNotThereWhenOnlyItsAccentedFormIs) {
  EXPECT_TRUE(menuPressed(FieldBehaviour::pasteOnly(), "Vie", "Vie\u0323t"));
}
TEST_F(VerificationTest, UnreadableFieldIsTakenToHaveTheText) {
  EXPECT_FALSE(menuPressed(FieldBehaviour::terminal(), "Việt", ""));
}

TEST_F(VerificationTest, TextInOneOfTheTwoFieldsIsEnoughAndOneFieldWithoutItForTheMenu) {
  const auto pasteOnly = [this](const char* value) -> auto& {
    return field(FieldBehaviour::pasteOnly(), value);
  };
  auto& second = pasteOnly("");
  EXPECT_THAT(pressedAfterTheFocusWentTo(second, pasteOnly("chữ")), IsEmpty()) << "in the captured field";
  EXPECT_THAT(pressedAfterTheFocusWentTo(field(FieldBehaviour::terminal()), pasteOnly("")),
              ElementsAre("Dán"));
  editor_.setSwallowsKeys(false);
  EXPECT_THAT(pressedAfterTheFocusWentTo(second, pasteOnly("")), ElementsAre("Dán")) << "no further press";
  EXPECT_EQ(second.value(), "chữ") << "the newly focused field";
}

TEST_F(VerificationTest, ChecksOfASupersededInsertionAndOfAGoneServicePressNothing) {
  auto& page = field(FieldBehaviour::pasteOnly());
  service_->insert("một", target(page));
  wait(0.6);
  service_->insert("hai", target(page));
  wait(0.79);
  service_.reset();
  wait(1);
  EXPECT_THAT(bar_.presses(), IsEmpty());
}

/// The Edit menu is filled only after it was opened, so the check runs the main loop while it waits.
class OpeningMenuTest : public TextInsertionFixture {
 protected:
  OpeningMenuTest() {
    bar_.setVisibility({.whileClosed = false, .builtAfter = Seconds{0.06}});
    editor_.setSwallowsKeys(true);
  }
  /// Starts an insertion and runs `event` while its check waits, which is from 0.8 s to 0.92 s.
  void insertAndDuringTheWait(const std::function<void()>& event) {
    service_->insert("một", target(page_));
    desktop_.loop().asyncAfter(Seconds{0.85}, [&] {
      EXPECT_NE(bar_.openMenu(), nullptr);
      event();
    });
    wait(0.95);
  }

  simulated::SimulatedField& page_ = field(FieldBehaviour::pasteOnly());
  simulated::SimulatedMenuBar& bar_ = editor_.addMenuBar(simulated::MenuLanguage::english);
};

TEST_F(OpeningMenuTest, ServiceThatEndsDuringTheWaitPressesNothing) {
  insertAndDuringTheWait([this] { service_.reset(); });
  EXPECT_THAT(bar_.presses(), IsEmpty());
}

TEST_F(OpeningMenuTest, NewerInsertionDuringTheWaitEndsTheOlderOne) {
  insertAndDuringTheWait([this] { service_->insert("hai", target(page_)); });
  EXPECT_THAT(bar_.presses(), IsEmpty()) << "the older one would have pasted the newer text too early";
  EXPECT_EQ(page_.value(), "");
  wait(1);
  EXPECT_THAT(bar_.presses(), ElementsAre("Paste"));
  EXPECT_EQ(page_.value(), "hai");
}

TEST_F(OpeningMenuTest, NewerInsertionByAccessibilityLeavesTheOlderOneAlone) {
  auto& other = editor_.addField("khác");
  insertAndDuringTheWait([&] { service_->insert("hai", target(other)); });
  EXPECT_THAT(bar_.presses(), ElementsAre("Paste"));
  EXPECT_EQ(other.value(), "hai");
}

}  // namespace
}  // namespace tavelo
