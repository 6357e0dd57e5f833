#include <string>

#include <gtest/gtest.h>

#include "recognizer/vosk/VoskReply.h"

using namespace std::string_literals;

namespace tavelo::recognition {
namespace {

TEST(VoskReply, ReadsTheAnswersOfTheLibrary) {
  const auto partial = VoskReply::parse("{\n  \"partial\" : \"anh phú\"\n}");
  ASSERT_TRUE(partial);
  EXPECT_EQ(partial->partial, "anh phú");
  EXPECT_FALSE(partial->text);

  const auto utterance =
      VoskReply::parse(R"({"result": [{"conf": 1.0, "word": "anh"}], "text": "anh", "more": {"a": [1]}})");
  ASSERT_TRUE(utterance);
  EXPECT_EQ(utterance->text, "anh");

  const auto alternatives =
      VoskReply::parse(R"({"alternatives": [{"confidence": 1.0, "text": "anh"}, {"text": "ăn"}]})");
  ASSERT_TRUE(alternatives);
  EXPECT_EQ(alternatives->text, "anh");
}

TEST(VoskReply, KeepsNulAndLongText) {
  EXPECT_EQ(VoskReply::parse(R"({"text": "a\u0000b"})")->text, "a\0b"s);
  const std::string longText(5'000'000, 'a');
  EXPECT_EQ(VoskReply::parse(R"({"text": ")" + longText + "\"}")->text, longText);
}

TEST(VoskReply, InvalidRepliesAreAbsent) {
  const std::string deep = std::string(200'000, '[');
  for (const std::string& json :
       {""s, "{"s, "null"s, "{}"s, "text"s, R"({"text": 5})"s, R"({"partial": null, "text": ""})"s,
        "{\"text\": \"\xC3\x28\"}"s, R"({"text": "\ud800"})"s, R"({"alternatives": []})"s,
        R"({"alternatives": [5]})"s, R"({"text": "a"} trailing)"s, deep}) {
    EXPECT_FALSE(VoskReply::parse(json)) << json.substr(0, 40);
    EXPECT_FALSE(VoskReply::parseFromServer(json)) << json.substr(0, 40);
  }
}

TEST(VoskReply, AnArrayIsReadOnlyWhereAllowed) {
  const std::string array = R"([{"text": "anh"}, {"text": "ăn"}])";
  EXPECT_FALSE(VoskReply::parse(array));
  ASSERT_TRUE(VoskReply::parseFromServer(array));
  EXPECT_EQ(VoskReply::parseFromServer(array)->text, "anh");
  EXPECT_FALSE(VoskReply::parseFromServer("[]"));
}

}  // namespace
}  // namespace tavelo::recognition
