// Two dictations that share the clipboard, on a desktop that lays dictated text over the user's contents.

#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insertion/TextInsertionService.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::SimulatedPasteboard;
using testing::ElementsAreArray;

/// A terminal that takes pasted text only, and rich contents of the user's on the pasteboard.
class OverlappingInsertionsTest : public testing::Test {
 protected:
  OverlappingInsertionsTest() {
    terminal_.bringToFront();
    terminal_.focus(&screen_);
    pasteboard().copy(users_);
    // As the keyboard of a real desktop does, right before the chord or in its place.
    desktop_.observe([this](const simulated::WorldEvent& event) {
      if (event.text != "post Command-V down at hid") return;
      if (isNowhere_) return desktop_.overlaidPasteboard().keepText(desktop_.loop());
      desktop_.overlaidPasteboard().prepareForPaste();
    });
  }

  SimulatedPasteboard& pasteboard() { return desktop_.pasteboard(); }
  void insert(const std::string& text) {
    isNowhere_ = false;
    service_.insert(text,
                    FocusTarget{desktop_.workspace().frontmostApplication(), screen_.shared_from_this()});
  }
  void insertAt(double when, const std::string& text) {
    desktop_.loop().asyncAfter(Seconds{when}, [this, text] { insert(text); });
  }
  void insertNowhere(const std::string& text) {
    insert(text);
    isNowhere_ = true;
  }
  void copyAt(double when, const std::string& text) {
    desktop_.loop().asyncAfter(Seconds{when}, [this, text] { pasteboard().copy(text); });
  }
  void wait(double seconds) { desktop_.advance(Seconds{seconds}); }

  bool isNowhere_ = false;
  const std::vector<SimulatedPasteboard::Item> users_{
      {{"public.html", "<b>mật khẩu</b>"}, {platform::pasteboardTypeString, "mật khẩu"}},
      {{"public.png", std::string("\x89PNG\0\xff", 6)}}};
  simulated::SimulatedDesktop desktop_{{.overlaysPasteboard = true}};
  simulated::SimulatedApplication& terminal_ = desktop_.openApplication("Dòng lệnh");
  simulated::SimulatedField& screen_ = terminal_.addField("màn hình", simulated::FieldBehaviour::pasteOnly());
  TextInsertionService service_;
};

TEST_F(OverlappingInsertionsTest, EveryGapPastesTheRightTextOnceAndGivesTheClipboardBack) {
  for (int step = 2; step <= 92; ++step) {
    const double gap = step * 0.05;
    SCOPED_TRACE(gap);
    screen_.setValue("");
    insert("một ");
    insertAt(gap, "hai ");
    wait(gap + 3.999);
    // A second text within the paste delay takes the place of the first.
    EXPECT_EQ(screen_.value(), gap < 0.45 ? "hai " : "một hai ");
    EXPECT_EQ(pasteboard().string(), "hai ");
    wait(0.002);
    EXPECT_THAT(pasteboard().items(), ElementsAreArray(users_));
    wait(1);
  }
}

TEST_F(OverlappingInsertionsTest, WhatTheUserCopiesBeforeOrAfterThePasteIsNotPastedAndStays) {
  for (const double when : {0.2, 2.0}) {
    pasteboard().copy(users_);
    screen_.setValue("");
    copyAt(when, "mới");
    insert("một ");
    wait(3);
    EXPECT_EQ(screen_.value(), "một ");
    wait(2);
    EXPECT_EQ(pasteboard().string(), "mới");
  }
}

TEST_F(OverlappingInsertionsTest, WhatTheUserCopiesBetweenTwoDictationsComesBack) {
  copyAt(1, "mới");
  insert("một ");
  insertAt(2, "hai ");
  wait(5.9);
  EXPECT_EQ(screen_.value(), "một hai ");
  EXPECT_EQ(pasteboard().string(), "hai ");
  wait(0.2);
  EXPECT_EQ(pasteboard().string(), "mới");
}

TEST_F(OverlappingInsertionsTest, AClipboardManagerThatTakesOurTextOverHasNotTakenIt) {
  copyAt(1, "một ");
  insert("một ");
  wait(5);
  EXPECT_THAT(pasteboard().items(), ElementsAreArray(users_));
}

TEST_F(OverlappingInsertionsTest, TheUsersCopyOfTheTextWithItsMarkupIsTheUsers) {
  const std::vector<SimulatedPasteboard::Item> marked{
      {{"text/html", "<b>một </b>"}, {platform::pasteboardTypeString, "một "}}};
  desktop_.loop().asyncAfter(Seconds{2}, [&] { pasteboard().copy(marked); });
  insert("một ");
  wait(5);
  EXPECT_THAT(pasteboard().items(), ElementsAreArray(marked));
}

TEST_F(OverlappingInsertionsTest, TheMenuPastesTheTextWhateverTheUserCopiedAfterTheKeystroke) {
  terminal_.addMenuBar(simulated::MenuLanguage::vietnamese);
  terminal_.setSwallowsKeys(true);
  copyAt(0.6, "mật khẩu mới");
  insert("một ");
  wait(1);
  EXPECT_EQ(screen_.value(), "một ");
  wait(4);
  EXPECT_EQ(pasteboard().string(), "mật khẩu mới");
}

TEST_F(OverlappingInsertionsTest, AnOwnerThatDoesNotAnswerLosesNothingToALaterRestore) {
  pasteboard().silenceOwner();
  insert("một ");
  insertAt(1, "hai ");
  wait(6);
  EXPECT_EQ(screen_.value(), "một hai ");
  EXPECT_EQ(pasteboard().string(), "hai ");
}

TEST_F(OverlappingInsertionsTest, NothingOnTheClipboardIsRestoredAsNothing) {
  pasteboard().copy(std::vector<SimulatedPasteboard::Item>{});
  insert("một ");
  insertAt(3.75, "hai ");
  wait(8);
  EXPECT_EQ(screen_.value(), "một hai ");
  EXPECT_TRUE(pasteboard().items().empty());
}

TEST_F(OverlappingInsertionsTest, TextThatCouldBePutNowhereStaysForAMinuteOverWhatTheUserHad) {
  copyAt(0.2, "mới");
  insertNowhere("một ");
  wait(0.46);
  EXPECT_EQ(pasteboard().string(), "một ") << "the copy is not what was dictated";
  wait(59.98);
  EXPECT_EQ(pasteboard().string(), "một ");
  wait(0.02);
  EXPECT_EQ(pasteboard().string(), "mới");

  pasteboard().copy(users_);
  insertNowhere("hai ");
  insertAt(20, "ba ");
  wait(23.99);
  EXPECT_EQ(pasteboard().string(), "ba ");
  wait(0.02);
  EXPECT_THAT(pasteboard().items(), ElementsAreArray(users_)) << "the newer text has the usual 4 s";

  insertNowhere("bốn ");
  wait(30);
  insertNowhere("năm ");
  wait(31);
  EXPECT_EQ(pasteboard().string(), "năm ") << "the minute of the older text is over";
  pasteboard().copy("mới");
  wait(40);
  EXPECT_EQ(pasteboard().string(), "mới");
}

TEST_F(OverlappingInsertionsTest, TextThatStaysGoesWithTheProgramAndNeverPassesForTheUsers) {
  {
    platform::OverlaidPasteboard ending(pasteboard());
    ending.pasteboardItems();
    ending.clearContents();
    ending.setString("một ", platform::pasteboardTypeString);
    ending.keepText(desktop_.loop());
  }
  EXPECT_THAT(pasteboard().items(), ElementsAreArray(users_));
  pasteboard().silenceOwner();
  insertNowhere("hai ");
  wait(61);
  EXPECT_EQ(pasteboard().string(), "hai ") << "nobody knows what the user had";
  insert("ba ");
  wait(5);
  EXPECT_EQ(pasteboard().string(), "ba ");
}

}  // namespace
}  // namespace tavelo
