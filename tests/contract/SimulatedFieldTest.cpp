#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::simulated {
namespace {

using platform::AXError;
using platform::AXRange;
using platform::AXValue;
namespace ax = platform::ax;

class SimulatedFields : public testing::Test {
 protected:
  AXError set(const char* attribute, const AXValue& value) {
    return platform::current().accessibility.setAttributeValue(field_.shared_from_this(), attribute, value);
  }
  AXValue read(const char* attribute) {
    AXValue value = std::string{"no answer"};
    platform::current().accessibility.copyAttributeValue(field_.shared_from_this(), attribute, value);
    return value;
  }
  void postPaste(platform::EventTapLocation location = platform::EventTapLocation::hid) {
    auto& keyboard = platform::current().keyboardEvents;
    auto key =
        keyboard.createKeyboardEvent(platform::EventSourceState::hidSystem, platform::keycodes::v, true);
    key->flags = platform::keyflags::command;
    keyboard.post(location, *key);
  }

  SimulatedDesktop desktop_;
  SimulatedApplication& notes_ = desktop_.openApplication("Notes");
  SimulatedField& field_ = notes_.addField("body");
};

TEST_F(SimulatedFields, SelectedTextReplacesTheSelectionInUtf16Units) {
  field_.setValue("a😀ế z");
  field_.select(1, 3);
  EXPECT_EQ(set(ax::selectedText, std::string{"Xin 😀"}), AXError::success);
  EXPECT_EQ(field_.value(), "aXin 😀 z");
  EXPECT_EQ(field_.selection(), (AXRange{7, 0}));
}

TEST_F(SimulatedFields, WholeValueResetsTheCaretAndTheRangeIsClamped) {
  field_.setValue("cũ");
  EXPECT_EQ(set(ax::value, std::string{"abcdef"}), AXError::success);
  EXPECT_EQ(field_.selection(), (AXRange{0, 0}));
  EXPECT_EQ(set(ax::selectedTextRange, AXRange{4, 10}), AXError::success);
  EXPECT_EQ(read(ax::selectedTextRange), AXValue(AXRange{4, 2}));
  EXPECT_EQ(set(ax::selectedTextRange, AXRange{-3, -1}), AXError::success);
  EXPECT_EQ(read(ax::selectedTextRange), AXValue(AXRange{0, 0}));
  EXPECT_EQ(set(ax::selectedTextRange, std::string{"no range"}), AXError::illegalArgument);
}

TEST_F(SimulatedFields, BehavioursDifferInWhatArrives) {
  struct Case {
    const char* name;
    FieldBehaviour behaviour;
    AXError selectedText;
    AXError value;
    const char* afterWrites;
    AXValue reads;
    const char* afterPaste;
  };
  const AXValue noAnswer = std::string{"no answer"};
  const Case cases[] = {
      {"valueOnly", FieldBehaviour::valueOnly(), AXError::failure, AXError::success, "v", std::string{"v"},
       "pv"},
      {"readOnly", FieldBehaviour::readOnly(), AXError::failure, AXError::failure, "old", std::string{"old"},
       "old"},
      {"terminal", FieldBehaviour::terminal(), AXError::failure, AXError::failure, "old", noAnswer, "oldp"},
      {"pasteOnly", FieldBehaviour::pasteOnly(), AXError::failure, AXError::failure, "old",
       std::string{"old"}, "oldp"},
      {"password", FieldBehaviour::password(), AXError::failure, AXError::failure, "old", noAnswer, "oldp"},
      {"falsePromise", FieldBehaviour::falsePromise(), AXError::success, AXError::success, "old",
       std::string{"old"}, "oldp"},
  };
  desktop_.pasteboard().copy("p");
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    field_.setBehaviour(each.behaviour);
    field_.setValue("old");
    EXPECT_EQ(set(ax::selectedText, std::string{"s"}), each.selectedText);
    EXPECT_EQ(set(ax::value, std::string{"v"}), each.value);
    EXPECT_EQ(field_.value(), each.afterWrites);
    EXPECT_EQ(read(ax::value), each.reads);
    postPaste();
    EXPECT_EQ(field_.value(), each.afterPaste);
  }
}

TEST_F(SimulatedFields, RangeCanBeOutOfBounds) {
  FieldBehaviour behaviour;
  behaviour.rangeReading = RangeReading::given;
  behaviour.givenRange = {99, -5};
  field_.setBehaviour(behaviour);
  EXPECT_EQ(read(ax::selectedTextRange), AXValue(AXRange{99, -5}));
}

TEST_F(SimulatedFields, PasteGoesWhereTheKeyboardIs) {
  SimulatedApplication& panel = desktop_.workspace().addApplication("Panel");
  SimulatedField& search = panel.addField("search");
  desktop_.pasteboard().copy("p");
  desktop_.workspace().setPanelFocus(&search);
  postPaste();
  EXPECT_EQ(search.value(), "p");
  desktop_.workspace().setPanelFocus(nullptr);
  postPaste(platform::EventTapLocation::session);
  EXPECT_EQ(field_.value(), "");
  desktop_.keyboard().press(Key::command);
  desktop_.keyboard().press(Key::v);
  EXPECT_EQ(field_.value(), "p");
  notes_.setSwallowsKeys(true);
  postPaste();
  EXPECT_EQ(field_.value(), "p");
}

TEST_F(SimulatedFields, HungApplicationPastesWhatIsThereWhenItWakes) {
  desktop_.pasteboard().copy("dictated");
  notes_.hang();
  postPaste();
  desktop_.pasteboard().copy("later");
  EXPECT_EQ(field_.value(), "");
  notes_.wake();
  EXPECT_EQ(field_.value(), "later");
}

TEST_F(SimulatedFields, PasteboardFaultsAreAsOnARealDesktop) {
  platform::Pasteboard& pasteboard = platform::current().generalPasteboard;
  desktop_.pasteboard().copy({{{"public.png", std::nullopt}, {platform::pasteboardTypeString, "t"}}});
  const auto items = pasteboard.pasteboardItems();
  ASSERT_EQ(items->size(), 1U);
  EXPECT_EQ(items->front()->data("public.png"), std::nullopt);
  EXPECT_EQ(items->front()->data(platform::pasteboardTypeString), "t");
  EXPECT_FALSE(pasteboard.setString("not the owner", platform::pasteboardTypeString));
  desktop_.pasteboard().silenceOwner();
  EXPECT_FALSE(pasteboard.pasteboardItems());
  pasteboard.clearContents();
  // Items read earlier are empty once the pasteboard changes.
  EXPECT_TRUE(items->front()->types().empty());
  EXPECT_TRUE(pasteboard.pasteboardItems()->empty());
}

TEST_F(SimulatedFields, SecretTextStaysOutOfTheEvents) {
  std::string everything;
  desktop_.observe([&](const WorldEvent& event) { everything += event.text; });
  FieldBehaviour secret;
  secret.isSecret = true;
  field_.setBehaviour(secret);
  set(ax::selectedText, std::string{"bí mật"});
  field_.type("mật");
  EXPECT_EQ(everything.find("mật"), std::string::npos);
  EXPECT_NE(everything.find("has changed"), std::string::npos);
}

}  // namespace
}  // namespace tavelo::simulated
