// Fields that change what is pasted, or read it late, on a desktop that sees who reads its pasteboard.

#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/insertion/TextInsertionFixture.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::FieldBehaviour;
using simulated::PasteChange;
using testing::ElementsAre;
using testing::IsEmpty;

struct Temper {
  const char* name;
  PasteChange change;
  /// What the field has used up by itself, and what it holds in the end.
  std::string used;
  std::string held;
};

void PrintTo(const Temper& tested, std::ostream* out) { *out << tested.name; }

class ChangingFieldsTest : public TextInsertionFixture, public testing::WithParamInterface<Temper> {
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

INSTANTIATE_TEST_SUITE_P(
    Tempers, ChangingFieldsTest,
    testing::Values(Temper{"none", PasteChange::none, "", "thôi...\nđi"},
                    Temper{"joinsLines", PasteChange::joinsLines, "", "thôi... đi"},
                    Temper{"upperCases", PasteChange::upperCases, "", "THÔI...\nĐI"},
                    Temper{"emptiesItself", PasteChange::emptiesItself, "uses up “thôi...⏎đi”", ""},
                    Temper{"makesEllipsis", PasteChange::makesEllipsis, "", "thôi…\nđi"},
                    Temper{"makesCarriageReturns", PasteChange::makesCarriageReturns, "", "thôi...\r\nđi"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(ChangingFieldsTest, GetsTheTextOnceWithoutTheMenu) {
  auto& page = fieldThat(GetParam().change, 0);
  service_->insert("thôi...\nđi", target(page));
  wait(6);
  EXPECT_EQ(used_, GetParam().used);
  EXPECT_EQ(page.value(), GetParam().held);
  EXPECT_THAT(bar_.presses(), IsEmpty());
  EXPECT_EQ(pasteboard().string(), "của người dùng");
}

TEST_P(ChangingFieldsTest, GetsTheTextOnceWhenItIsBusyAndTheMenuIsPressed) {
  auto& page = fieldThat(GetParam().change, 0.5);
  service_->insert("thôi...\nđi", target(page));
  wait(6);
  EXPECT_EQ(used_, GetParam().used);
  EXPECT_EQ(page.value(), GetParam().held);
  EXPECT_THAT(bar_.presses(), ElementsAre("Dán"));
}

using FetchTest = ChangingFieldsTest;

TEST_F(FetchTest, AnApplicationThatIgnoredTheKeysGetsTheTextFromItsMenu) {
  auto& page = fieldThat(PasteChange::none, 0);
  editor_.setSwallowsKeys(true);
  service_->insert("chữ", target(page));
  wait(1);
  EXPECT_EQ(page.value(), "chữ");
}

TEST_F(FetchTest, AFetchWhileTheMenuOpensIsInTime) {
  auto& page = fieldThat(PasteChange::upperCases, 0.4);
  bar_.setVisibility({.whileClosed = false, .builtAfter = Seconds{0.06}});
  service_->insert("go", target(page));
  wait(2);
  EXPECT_EQ(page.value(), "GO");
  EXPECT_THAT(bar_.presses(), IsEmpty());
}

}  // namespace
}  // namespace tavelo
