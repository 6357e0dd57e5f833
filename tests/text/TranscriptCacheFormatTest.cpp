#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "text/InternetDateTime.h"
#include "text/TranscriptCacheFormat.h"

namespace tavelo {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

constexpr std::string_view idText = "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0";

TranscriptCacheEntry sampleEntry() {
  TranscriptCacheEntry entry;
  entry.id = *platform::Uuid::parse(idText);
  entry.createdAt = std::chrono::sys_days{2025y / 3 / 14} + 8h + 5min + 9s;
  entry.localeIdentifier = "vi_VN";
  entry.rawTranscript = "xin chào dấu chấm";
  entry.normalizedText = "Xin chào.";
  return entry;
}

std::string encode(const std::vector<TranscriptCacheEntry>& entries) {
  return TranscriptCacheEncoder().encode(entries);
}

std::optional<std::vector<TranscriptCacheEntry>> decode(std::string_view json) {
  return TranscriptCacheDecoder().decode(json);
}

/// One entry in compact JSON, with `more` after its required members.
std::string withMembers(const std::string& more) {
  return R"([{"id":"0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0","createdAt":"2025-03-14T08:05:09Z",)"
         R"("rawTranscript":"xin chào dấu chấm","localeIdentifier":"vi_VN","normalizedText":"Xin chào.")" +
         more + "}]";
}

std::string repeated(std::size_t count, std::string_view part) {
  std::string text;
  while (count-- > 0) text += part;
  return text;
}

TEST(TranscriptCacheEncoder, WritesTheLayoutByteForByte) {
  TranscriptCacheEntry full = sampleEntry();
  full.createdAt += 999999us;
  full.sourceAppName = "Ghi chú";
  full.sourceBundleIdentifier = "org.example/notes";
  full.normalizedText = "a\"b\\c/d\b\f\n\r\t\x01\x1f\x7f\0e\u2028😀"s;
  EXPECT_EQ(encode({full, sampleEntry()}), R"([
  {
    "createdAt" : "2025-03-14T08:05:09Z",
    "id" : "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0",
    "localeIdentifier" : "vi_VN",
    "normalizedText" : "a\"b\\c\/d\b\f\n\r\t\u0001\u001f)"
                                           "\x7f\\u0000e\u2028😀"
                                           R"(",
    "rawTranscript" : "xin chào dấu chấm",
    "sourceAppName" : "Ghi chú",
    "sourceBundleIdentifier" : "org.example\/notes"
  },
  {
    "createdAt" : "2025-03-14T08:05:09Z",
    "id" : "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0",
    "localeIdentifier" : "vi_VN",
    "normalizedText" : "Xin chào.",
    "rawTranscript" : "xin chào dấu chấm"
  }
])");
  EXPECT_EQ(encode({}), "[]");
}

TEST(TranscriptCacheDecoder, ReadsBackWhatWasWritten) {
  std::vector<TranscriptCacheEntry> entries{sampleEntry(), sampleEntry()};
  entries[0].sourceAppName = "Ghi chú";
  entries[1].id = platform::Uuid::random();
  entries[1].normalizedText = "a\"b\\c/d\b\f\n\r\t\x01\x1f\x7f\0e\u2028😀"s;
  EXPECT_EQ(decode(encode(entries)), entries);

  entries[1].normalizedText = "\xE1\xBB!\xFF";
  const auto repaired = decode(encode(entries));
  ASSERT_TRUE(repaired);
  EXPECT_EQ(repaired->at(1).normalizedText, "\uFFFD!\uFFFD");
}

TEST(TranscriptCacheDecoder, AcceptsEveryJsonTextOfTheShape) {
  const std::vector<TranscriptCacheEntry> one{sampleEntry()};
  EXPECT_EQ(decode(withMembers("")), one);
  EXPECT_EQ(decode("\xEF\xBB\xBF \r\n\t" + withMembers("") + " \n"), one);
  EXPECT_EQ(decode(withMembers(R"(,"sourceAppName":null,"sourceBundleIdentifier":null)")), one);
  EXPECT_EQ(decode(withMembers(R"(,"\u0073ourceAppName":"\ud83d\ude00\/\u00e9")"))->at(0).sourceAppName,
            "😀/é");
  EXPECT_EQ(decode("[]"), std::vector<TranscriptCacheEntry>{});
}

TEST(TranscriptCacheDecoder, SkipsUnknownMembersWhateverTheyHold) {
  const std::vector<TranscriptCacheEntry> one{sampleEntry()};
  for (const std::string& value :
       {R"({"id":1,"rawTranscript":[{}],"createdAt":{"id":null}})"s, R"("12345\"678")"s, "true"s, "null"s,
        "1e99999"s, "-0.001E-99999"s, repeated(400, "9"),
        "0." + repeated(400, "7") + "e+" + repeated(400, "1"), repeated(100000, "[") + repeated(100000, "]"),
        repeated(100000, R"({"id":)") + "0" + repeated(100000, "}")}) {
    EXPECT_EQ(decode(withMembers(",\"x\":" + value + ",\"y\":[" + value + "]")), one) << value.substr(0, 60);
  }
}

TEST(TranscriptCacheDecoder, RefusesWhatIsNotStrictJson) {
  const std::string good = withMembers("");
  ASSERT_TRUE(decode(good));
  for (const std::string& bad :
       {""s, " "s, good + ",", good + "]", good + "\0"s, good + "\0 x"s, good.substr(0, good.size() - 1),
        "[,]"s, "[" + good.substr(1, good.size() - 2) + ",]", "// no\n" + good, withMembers(","),
        "\xFF\xFE[\0]\0"s}) {
    EXPECT_FALSE(decode(bad)) << testing::PrintToString(bad);
  }
  for (const std::string& value :
       {"01"s, "0001"s, "1."s, "+1"s, "1e"s, "NaN"s, "'a'"s, "[}]"s, R"("\ud83d")"s, R"("\ude00")"s,
        R"("\x41")"s, "\"a\nb\""s, "\"\xC0\x80\""s, "\"\xED\xA0\x80\""s, "\"\xFF\""s, "\"a\0\""s}) {
    EXPECT_FALSE(decode(withMembers(",\"x\":" + value))) << testing::PrintToString(value);
  }
}

TEST(TranscriptCacheDecoder, RefusesAnotherShape) {
  const std::string good = withMembers("");
  const std::string object = good.substr(1, good.size() - 2);
  for (const std::string& bad :
       {"null"s, "1"s, "\"a\""s, "{}"s, object, "[null]"s, "[1]"s, "[\"a\"]"s, "[[]]"s, "[{}]"s,
        "[" + good + "]", "[" + object + ",1]", withMembers(R"(,"id":null)"),
        withMembers(R"(,"id":"0F1E2D3C")"), withMembers(R"(,"sourceAppName":1)"),
        withMembers(R"(,"sourceAppName":{})"), withMembers(R"(,"rawTranscript":["a"])"),
        withMembers(R"(,"createdAt":"2025-03-14")"), withMembers(R"(,"createdAt":0)")}) {
    EXPECT_FALSE(decode(bad)) << bad;
  }
  for (const std::string key : {"id", "createdAt", "rawTranscript", "localeIdentifier", "normalizedText"}) {
    std::string bad = good;
    bad.replace(bad.find("\"" + key + "\""), 2, "\"_");
    EXPECT_FALSE(decode(bad)) << bad;
  }
}

TEST(TranscriptCacheDecoder, LargeAndHostileTextsEndSoon) {
  TranscriptCacheEntry large = sampleEntry();
  large.rawTranscript = repeated(300'000, "dấu chấm/");
  EXPECT_EQ(decode(encode({large}))->at(0).rawTranscript.size(), large.rawTranscript.size());
  EXPECT_EQ(decode(encode(std::vector(5000, sampleEntry())))->size(), 5000U);
  for (const std::string_view part : {"[", "{\"a\":", "\"", "9", "[{", " ", "[{\"x\":[", "\\"}) {
    EXPECT_FALSE(decode(repeated(300'000 / part.size(), part))) << part;
  }
  EXPECT_FALSE(decode(R"([{"x":)" + repeated(3'000'000, "[")));
}

TEST(InternetDateTime, ReadsRealCalendarDatesOnly) {
  const auto at = [](std::string_view text) { return parseInternetDateTime(text); };
  const TranscriptCacheEntry::Time time = sampleEntry().createdAt;
  EXPECT_EQ(at("2025-03-14T08:05:09Z"), time);
  EXPECT_EQ(at("2025-03-14T15:05:09+07:00"), time);
  EXPECT_EQ(at("2025-03-13T20:35:09-11:30"), time);
  EXPECT_TRUE(at("2024-02-29T23:59:59Z"));
  for (const std::string_view bad : {"2025-02-29T00:00:00Z",      "2025-13-01T00:00:00Z",
                                     "2025-00-10T00:00:00Z",      "2025-03-00T00:00:00Z",
                                     "2025-03-14T24:00:00Z",      "2025-03-14T08:60:00Z",
                                     "2025-03-14T08:05:60Z",      "2025-03-14T08:05:09.5Z",
                                     "2025-03-14T08:05:09",       "2025-03-14t08:05:09z",
                                     "2025-03-14 08:05:09Z",      "2025-03-14T08:05:09+0700",
                                     "2025-03-14T08:05:09+24:00", "2025-03-14T08:05:09+07:60",
                                     "2025-3-14T08:05:09Z",       " 2025-03-14T08:05:09Z",
                                     "2025+03-14T08:05:09Z",      "2025-03-14T08:05:09Z ",
                                     "-025-03-14T08:05:09Z",      "0000-01-01T00:00:00+00:01",
                                     "9999-12-31T23:59:59-00:01", ""}) {
    EXPECT_FALSE(at(bad)) << bad;
  }
}

TEST(InternetDateTime, EveryYearOfFourDigitsSurvives) {
  for (const std::string text : {"0000-01-01T00:00:00Z", "1600-02-29T12:00:00Z", "1969-12-31T23:59:59Z",
                                 "2262-04-12T00:00:00Z", "9999-12-31T23:59:59Z"}) {
    ASSERT_TRUE(parseInternetDateTime(text)) << text;
    EXPECT_EQ(internetDateTime(*parseInternetDateTime(text)), text);
  }
  EXPECT_EQ(internetDateTime(TranscriptCacheEntry::Time(-1us)), "1969-12-31T23:59:59Z");
}

}  // namespace
}  // namespace tavelo
