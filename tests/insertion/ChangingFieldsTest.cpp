// Fields that change what is pasted, or read it late, on a desktop that sees who reads its pasteboard.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/insertion/TextInsertionFixture.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::FieldBehaviour;
using simulated::PasteChange;
using testing::IsEmpty;

class ChangingFieldsTest : public TextInsertionFixture {
 protected:
  ChangingFieldsTest() {
    pasteboard().setTellsFetches(true);
    desktop_.observe([this](const simulated::WorldEvent& event) {
      if (const auto at = event.text.find("uses up "); at != std::string::npos)
        used_ += event.text.substr(at);
    });
  }
  simulated::SimulatedField& fieldThat(PasteChange change, double delay) {
    auto behaviour = FieldBehaviour::pasteOnly();
    behaviour.pasteChange = change;
    behaviour.pasteDelay = Seconds{delay};
    return field(behaviour);
  }

  simulated::SimulatedMenuBar& bar_ = editor_.addMenuBar(simulated::MenuLanguage::vietnamese);
  std::string used_;
};

TEST_F(ChangingFieldsTest, GetTheTextOnceAndFromTheMenuOnlyWhenTheyAreBusy) {
  const struct {
    PasteChange change;
    /// What the field has used up by itself, and what it holds in the end.
    const char *used, *held;
  } tempers[] = {{PasteChange::none, "", "thôi...\nđi"},
                 {PasteChange::joinsLines, "", "thôi... đi"},
                 {PasteChange::upperCases, "", "THÔI...\nĐI"},
                 {PasteChange::emptiesItself, "uses up “thôi...⏎đi”", ""},
                 {PasteChange::makesEllipsis, "", "thôi…\nđi"},
                 {PasteChange::makesCarriageReturns, "", "thôi...\r\nđi"}};
  std::size_t presses = 0;
  for (const bool isBusy : {false, true}) {
    for (const auto& [change, used, held] : tempers) {
      auto& page = fieldThat(change, isBusy ? 0.5 : 0);
      editor_.focus(&page);
      used_.clear();
      service_->insert("thôi...\nđi", target(page));
      wait(6);
      EXPECT_EQ(used_, used);
      EXPECT_EQ(page.value(), held);
      if (isBusy) ++presses;
      EXPECT_EQ(bar_.presses().size(), presses) << held;
      EXPECT_EQ(pasteboard().string(), "của người dùng");
    }
  }
}

TEST_F(ChangingFieldsTest, AnApplicationThatIgnoredTheKeysGetsTheTextFromItsMenu) {
  auto& page = fieldThat(PasteChange::none, 0);
  editor_.setSwallowsKeys(true);
  service_->insert("chữ", target(page));
  wait(1);
  EXPECT_EQ(page.value(), "chữ");
}

TEST_F(ChangingFieldsTest, AFetchWhileTheMenuOpensIsInTime) {
  auto& page = fieldThat(PasteChange::upperCases, 0.4);
  bar_.setVisibility({.whileClosed = false, .builtAfter = Seconds{0.06}});
  service_->insert("go", target(page));
  wait(2);
  EXPECT_EQ(page.value(), "GO");
  EXPECT_THAT(bar_.presses(), IsEmpty());
}

}  // namespace
}  // namespace tavelo
