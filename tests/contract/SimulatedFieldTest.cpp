#include <string>

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::simulated {
namespace {

using platform::AXError;
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
  void pressCommandV() {
    for (const Key key : {Key::command, Key::v}) desktop_.keyboard().press(key);
    for (const Key key : {Key::command, Key::v}) desktop_.keyboard().release(key);
  }

  SimulatedDesktop desktop_;
  SimulatedApplication& notes_ = desktop_.openApplication("Notes");
  SimulatedField& field_ = notes_.addField("body");
};

TEST_F(SimulatedFields, KindsThatTakeNoWriteDifferInTheirAnswers) {
  struct Case {
    const char* name;
    FieldBehaviour behaviour;
    AXError writes;
    AXValue reads;
    const char* afterPaste;
  };
  const AXValue noAnswer = std::string{"no answer"};
  const Case cases[] = {
      {"readOnly", FieldBehaviour::readOnly(), AXError::failure, std::string{"old"}, "old"},
      {"password", FieldBehaviour::password(), AXError::failure, noAnswer, "oldp"},
      {"falsePromise", FieldBehaviour::falsePromise(), AXError::success, std::string{"old"}, "oldp"},
  };
  desktop_.pasteboard().copy("p");
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    field_.setBehaviour(each.behaviour);
    field_.setValue("old");
    EXPECT_EQ(set(ax::selectedText, std::string{"s"}), each.writes);
    EXPECT_EQ(set(ax::value, std::string{"v"}), each.writes);
    EXPECT_EQ(field_.value(), "old");
    EXPECT_EQ(read(ax::value), each.reads);
    pressCommandV();
    EXPECT_EQ(field_.value(), each.afterPaste);
  }
}

TEST_F(SimulatedFields, PasteGoesWhereTheKeyboardIs) {
  SimulatedApplication& panel = desktop_.workspace().addApplication("Panel");
  SimulatedField& search = panel.addField("search");
  desktop_.pasteboard().copy("p");
  desktop_.workspace().setPanelFocus(&search);
  pressCommandV();
  EXPECT_EQ(search.value(), "p");
  EXPECT_EQ(field_.value(), "");
  desktop_.workspace().setPanelFocus(nullptr);
  pressCommandV();
  EXPECT_EQ(field_.value(), "p");
}

TEST_F(SimulatedFields, ItemsOfThePasteboardEndWithItsContentsAndOnlyTheOwnerAddsText) {
  platform::Pasteboard& pasteboard = platform::current().generalPasteboard;
  desktop_.pasteboard().copy("t");
  const auto items = pasteboard.pasteboardItems();
  EXPECT_FALSE(pasteboard.setString("not the owner", platform::pasteboardTypeString));
  EXPECT_EQ(items->front()->data(platform::pasteboardTypeString), "t");
  pasteboard.clearContents();
  EXPECT_TRUE(items->front()->types().empty());
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
