// Who gets dictated text from the X11 clipboard after a paste command, and whether we notice. The test itself
// is the target of the command; xclip is everybody else.

#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>

#include <gmock/gmock.h>

#include "platform/linux/x11/pasteboard/SelectionReader.h"
#include "platform/linux/x11/pasteboard/X11Pasteboard.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::PasteboardFetch;
using testing::ElementsAre;

std::string everybodyGets(const std::string& target = "UTF8_STRING") {
  const std::string command = "timeout 10 xclip -selection clipboard -o -t " + target;
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), &pclose);
  std::array<char, 4096> bytes{};
  return {bytes.data(), std::fread(bytes.data(), 1, bytes.size(), output.get())};
}

class LateReadersTest : public testing::Test {
 protected:
  void insert(const std::string& text) {
    pasteboard_.clearContents();
    pasteboard_.setString(text, platform::pasteboardTypeString);
  }
  void command() {
    pasteboard_.expectPaste(window_);
    desktop_.reply(xcb_get_input_focus_reply, xcb_get_input_focus(desktop_.get()));
  }
  void restore() {
    pasteboard_.clearContents();
    pasteboard_.writeObjects({{{{"text/html", "<b>mật khẩu</b>"}}}});
  }
  /// All formats that a paste of the target reads.
  std::vector<std::string> targetGets() {
    std::vector<std::string> types;
    const auto contents = reader_.read();
    for (const auto& [type, data] : contents.value_or(platform::PasteboardItemContent{}).representations)
      types.push_back(type + "=" + data);
    return types;
  }
  static auto textInAllFormats(const std::string& text) {
    return ElementsAre(platform::pasteboardTypeString + ("=" + text), "text/plain;charset=utf-8=" + text,
                       "text/plain=" + text, "STRING=" + text, "x-kde-passwordManagerHint=secret");
  }
  static auto usersContents() { return ElementsAre("text/html=<b>mật khẩu</b>"); }
  /// Asks for the text as an application does that was told of a new owner at this time.
  void readDated(xcb_timestamp_t time) {
    xcb_convert_selection(desktop_.get(), window_, desktop_.atom("CLIPBOARD"), desktop_.atom("UTF8_STRING"),
                          desktop_.atom("UTF8_STRING"), time);
    while (const auto event =
               desktop_.nextEvent(std::chrono::steady_clock::now() + std::chrono::seconds{10})) {
      if (kindOf(*event) == XCB_SELECTION_NOTIFY) return;
    }
    ADD_FAILURE() << "no answer";
  }

  XcbConnection desktop_;
  const xcb_window_t window_ = desktop_.createWindow();
  SelectionReader reader_;
  X11Pasteboard pasteboard_;
};

TEST_F(LateReadersTest, OnlyAReadOfTheTextByTheTargetAfterTheCommandCounts) {
  insert("chữ");
  EXPECT_THAT(targetGets(), textInAllFormats("chữ"));
  EXPECT_EQ(pasteboard_.fetchSincePaste(), PasteboardFetch::unknown);
  command();
  EXPECT_EQ(everybodyGets(), "chữ");
  EXPECT_EQ(pasteboard_.fetchSincePaste(), PasteboardFetch::no);
  readDated(1);
  EXPECT_EQ(pasteboard_.fetchSincePaste(), PasteboardFetch::no) << "asked before the command";
  EXPECT_THAT(targetGets(), textInAllFormats("chữ"));
  EXPECT_EQ(pasteboard_.fetchSincePaste(), PasteboardFetch::yes);
  insert("sau");
  EXPECT_EQ(pasteboard_.fetchSincePaste(), PasteboardFetch::unknown);
}

TEST_F(LateReadersTest, NobodyKnowsWhoGotTheCommand) {
  insert("chữ");
  pasteboard_.expectPaste(std::nullopt);
  EXPECT_THAT(targetGets(), textInAllFormats("chữ"));
  EXPECT_EQ(pasteboard_.fetchSincePaste(), PasteboardFetch::unknown);
  restore();
  EXPECT_THAT(targetGets(), usersContents());
}

TEST_F(LateReadersTest, TheTargetGetsTheTextLateAndEverybodyElseTheUsersContents) {
  insert("chữ");
  command();
  restore();
  EXPECT_EQ(everybodyGets("text/html"), "<b>mật khẩu</b>");
  EXPECT_THAT(everybodyGets("TARGETS"), testing::Not(testing::HasSubstr("UTF8_STRING")));
  EXPECT_THAT(targetGets(), textInAllFormats("chữ"));
  EXPECT_EQ(everybodyGets("text/html"), "<b>mật khẩu</b>");
}

TEST_F(LateReadersTest, OfTwoCommandsTheSecondPasteGetsNothing) {
  insert("chữ");
  command();
  pasteboard_.prepareForSecondPaste();
  restore();
  EXPECT_THAT(targetGets(), textInAllFormats("chữ"));
  EXPECT_THAT(targetGets(), ElementsAre("x-kde-passwordManagerHint=secret"));
}

TEST_F(LateReadersTest, WithoutACommandNobodyIsLate) {
  insert("trước");
  command();
  insert("chữ");
  restore();
  EXPECT_THAT(targetGets(), usersContents());
}

TEST_F(LateReadersTest, WhatTheUserCopiedMeanwhileIsNotCovered) {
  insert("chữ");
  command();
  SelectionOwner application;
  application.own({{"text/html", "text/html", std::make_shared<const std::string>("mới")}});
  EXPECT_THAT(targetGets(), ElementsAre("text/html=mới"));
  // Our own side hears of the new owner in its own time.
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds{10};
  while (pasteboard_.fetchSincePaste() != PasteboardFetch::unknown &&
         std::chrono::steady_clock::now() < deadline)
    std::this_thread::yield();
  EXPECT_EQ(pasteboard_.fetchSincePaste(), PasteboardFetch::unknown);
}

}  // namespace
}  // namespace tavelo::linuxdesktop
