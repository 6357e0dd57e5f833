#include "tests/contract/PasteboardContract.h"

#include <string>

#include <gmock/gmock.h>

namespace tavelo::contract {

using platform::PasteboardItemContent;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<PasteboardItemContent> PasteboardContract::contents() {
  const auto items = pasteboard().pasteboardItems();
  EXPECT_TRUE(items.has_value());
  std::vector<PasteboardItemContent> contents;
  for (const auto& item : items.value_or(std::vector<std::shared_ptr<platform::PasteboardItem>>{})) {
    PasteboardItemContent& content = contents.emplace_back();
    for (const auto& type : item->types())
      content.representations.push_back({type, item->data(type).value_or("?")});
  }
  return contents;
}

namespace {

PasteboardItemContent text(const std::string& string) { return {{{platform::pasteboardTypeString, string}}}; }

TEST_P(PasteboardContract, TextReplacesWhatTheUserCopied) {
  copy(text("của người dùng"));
  EXPECT_THAT(contents(), ElementsAre(text("của người dùng")));
  pasteboard().clearContents();
  EXPECT_THAT(contents(), IsEmpty());
  EXPECT_TRUE(pasteboard().setString("Xin chào.", platform::pasteboardTypeString));
  EXPECT_THAT(contents(), ElementsAre(text("Xin chào.")));
}

TEST_P(PasteboardContract, SavedItemIsWrittenBackWithAllItsTypesInOrder) {
  const PasteboardItemContent rich{{{"public.html", "<b>chào</b>"},
                                    {platform::pasteboardTypeString, "chào"},
                                    {"public.png", std::string("\x89PNG\0\xff", 6)}}};
  copy(rich);
  const auto saved = contents();
  pasteboard().clearContents();
  EXPECT_TRUE(pasteboard().setString("dictated", platform::pasteboardTypeString));
  pasteboard().clearContents();
  EXPECT_TRUE(pasteboard().writeObjects(saved));
  EXPECT_THAT(contents(), ElementsAre(rich));
}

TEST_P(PasteboardContract, NothingWrittenBackLeavesItEmpty) {
  copy(text("x"));
  pasteboard().clearContents();
  EXPECT_TRUE(pasteboard().writeObjects({}));
  EXPECT_THAT(contents(), IsEmpty());
}

}  // namespace
}  // namespace tavelo::contract
