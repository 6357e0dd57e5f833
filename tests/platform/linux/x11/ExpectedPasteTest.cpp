#include <gtest/gtest.h>

#include "platform/linux/x11/pasteboard/ExpectedPaste.h"

namespace tavelo::linuxdesktop {
namespace {

using Serving = ExpectedPaste::Serving;

constexpr std::uint32_t utf8 = 1;
constexpr std::uint32_t latin = 2;

/// A paste command at 0 s. The user's contents cover the text at 4 s, unless the test says otherwise.
class ExpectedPasteTest : public testing::Test {
 protected:
  ExpectedPasteTest() { paste_.begin(at(0)); }

  static ExpectedPaste::Instant at(double seconds) {
    using namespace std::chrono;
    return ExpectedPaste::Instant{} + hours{1} +
           round<ExpectedPaste::Instant::duration>(duration<double>(seconds));
  }
  Serving fetch(double seconds, std::uint32_t format = utf8) { return paste_.fetch(format, at(seconds)); }
  Serving listing(double seconds) { return paste_.listing(at(seconds)); }
  void openDialog(double seconds) {
    if (paste_.mayBringUpDialog(at(seconds))) paste_.setDialogOpen(true, at(seconds));
  }

  ExpectedPaste paste_;
};

TEST_F(ExpectedPasteTest, ATargetThatHasFetchedGetsTheUsersContentsFromThenOn) {
  EXPECT_EQ(fetch(0.1), Serving::text);
  EXPECT_EQ(fetch(2), Serving::text) << "the user pastes again while our text lies there";
  paste_.cover();
  EXPECT_EQ(fetch(4.1), Serving::clipboard);
  EXPECT_EQ(listing(4.1), Serving::clipboard);
  EXPECT_EQ(paste_.endsAt(), at(5)) << "a dialog may still come up";
}

TEST_F(ExpectedPasteTest, ATargetThatWakesLateGetsTheTextOnceInAllItsFormats) {
  paste_.cover();
  EXPECT_EQ(paste_.endsAt(), at(60));
  EXPECT_EQ(listing(50), Serving::text);
  EXPECT_EQ(fetch(50), Serving::text);
  EXPECT_EQ(fetch(50.1, latin), Serving::text);
  EXPECT_EQ(fetch(50.2), Serving::text) << "a terminal looks at the text before it pastes that";
  EXPECT_EQ(fetch(51), Serving::text);
  EXPECT_EQ(fetch(51.1), Serving::clipboard) << "reading on and on does not put the end off";
}

TEST_F(ExpectedPasteTest, FormatsOfOnePasteMayLieOnBothSidesOfTheRestore) {
  EXPECT_EQ(fetch(3.9), Serving::text);
  paste_.cover();
  EXPECT_EQ(listing(4.05), Serving::text);
  EXPECT_EQ(fetch(4.1, latin), Serving::text);
  EXPECT_EQ(fetch(8, latin), Serving::clipboard);
}

TEST_F(ExpectedPasteTest, ADialogThatThePasteBroughtUpGetsTheTextAgainUntilItIsClosed) {
  EXPECT_EQ(fetch(0.1), Serving::text);
  openDialog(0.3);
  paste_.cover();
  EXPECT_EQ(paste_.endsAt(), at(60));
  EXPECT_EQ(fetch(20), Serving::text);
  paste_.setDialogOpen(false, at(30));
  EXPECT_EQ(fetch(30.5), Serving::text) << "confirmed: the dialog closes before the target reads";
  EXPECT_EQ(fetch(32), Serving::clipboard);
}

TEST_F(ExpectedPasteTest, ADialogThatTheUserOpensLaterGetsTheUsersContents) {
  EXPECT_EQ(fetch(0.1), Serving::text);
  openDialog(3.5);
  paste_.cover();
  EXPECT_EQ(fetch(6), Serving::clipboard);
}

TEST_F(ExpectedPasteTest, OfTwoCommandsOnlyTheFirstPasteGetsTheText) {
  for (const bool isLate : {false, true}) {
    SCOPED_TRACE(isLate);
    paste_.begin(at(0));
    paste_.expectSecond();
    if (isLate) paste_.cover();
    EXPECT_EQ(fetch(9), Serving::text);
    EXPECT_EQ(fetch(9, latin), Serving::text);
    EXPECT_EQ(listing(9.1), Serving::text);
    EXPECT_EQ(fetch(9.1), Serving::nothing);
    EXPECT_EQ(fetch(9.1, latin), Serving::nothing);
    EXPECT_EQ(fetch(9.2), isLate ? Serving::clipboard : Serving::text) << "the user's own paste";
  }
}

TEST_F(ExpectedPasteTest, WhereTheFirstCommandWasLostTheUsersOwnPasteGetsSomething) {
  paste_.expectSecond();
  EXPECT_EQ(fetch(0.9), Serving::text);
  paste_.cover();
  EXPECT_EQ(fetch(6), Serving::clipboard);
}

TEST_F(ExpectedPasteTest, WithoutACommandEverybodyGetsWhatIsOnTheClipboard) {
  paste_.end();
  paste_.cover();
  paste_.expectSecond();
  EXPECT_EQ(listing(1), Serving::clipboard);
  EXPECT_EQ(fetch(1), Serving::clipboard);
  EXPECT_EQ(fetch(1), Serving::clipboard);
  EXPECT_EQ(paste_.endsAt(), std::nullopt);
}

}  // namespace
}  // namespace tavelo::linuxdesktop
