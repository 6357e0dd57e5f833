#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/linux/session/Autostart.h"
#include "platform/linux/session/EntryText.h"

namespace tavelo::linuxdesktop {
namespace {

namespace fs = std::filesystem;
using State = Autostart::State;

const std::string head = "[Desktop Entry]\nType=Application\nName=T\n";

class AutostartTest : public testing::Test {
 protected:
  ~AutostartTest() override { fs::remove_all(top_); }

  void put(const char* home, const std::string& text) {
    fs::create_directories(top_ / home / "autostart");
    std::ofstream(top_ / home / "autostart/tavelo.desktop") << text;
  }
  std::string users() const {
    std::ostringstream content;
    content << std::ifstream(*tested_.file()).rdbuf();
    return content.str();
  }

  static fs::path newFolder() {
    std::string name = (fs::temp_directory_path() / "tavelo-autostart-XXXXXX").string();
    return mkdtemp(name.data());
  }

  const fs::path top_ = newFolder();
  Autostart tested_{top_ / "user", {top_ / "none", top_ / "system"}, "/opt/my $HOME/tavelo"};
};

TEST(EntryText, ProgramWithAnyNameIsReadAsItWasWritten) {
  EXPECT_EQ(execLine("/a b/$x\\y\"100%/tavelo"), R"("/a b/\\$x\\\\y\\"100%%/tavelo")");
  for (const char* program : {"/usr/bin/tavelo", "/a b/$x`\\y\"100%/ế", "/a\nb"})
    EXPECT_EQ(programIn(execLine(program)), program);
  const std::pair<const char*, const char*> written[] = {
      {"tavelo", "tavelo"},
      {"env A=1 B=\"2 3\" /usr/bin/tavelo %U", "/usr/bin/tavelo"},
      {"/my=1/tavelo --x", "/my=1/tavelo"},
      {"\"/a b", "/a b"},
      {"env", ""},
      {" ", ""},
      {"\\", "\\"}};
  for (const auto& [line, program] : written) EXPECT_EQ(programIn(line), program) << line;
}

TEST_F(AutostartTest, UsersEntryCountsBeforeTheOneForAll) {
  const std::string own = head + "Exec=" + execLine("/opt/my $HOME/tavelo") + "\n";
  const struct {
    std::string user;
    std::string system;
    State state;
  } cases[] = {
      {"", "", State::off},
      {own, "", State::on},
      {"", head + "Exec=tavelo\n", State::on},
      {"# c\n" + own + "Hidden=true\n", head + "Exec=tavelo\n", State::off},
      {own + "X-GNOME-Autostart-enabled=false\n", "", State::off},
      {own + "[Desktop Action x]\nHidden=true\n", "", State::on},
      {head + "Exec=env A=b /gone/tavelo\n", "", State::elsewhere},
      {head + "Exec=/usr/bin/other\n", "", State::foreign},
      {head, head + "Exec=tavelo\n", State::off},
      {"\xFF nonsense [Desktop Entry]\nExec=tavelo\n", "", State::off},
  };
  for (const auto& each : cases) {
    fs::remove_all(top_ / "user");
    fs::remove_all(top_ / "system");
    if (!each.user.empty()) put("user", each.user);
    if (!each.system.empty()) put("system", each.system);
    EXPECT_EQ(tested_.status().state, each.state) << each.user << each.system;
    const bool refused = each.state == State::foreign;
    EXPECT_EQ(tested_.set(true).empty(), !refused) << each.user;
    EXPECT_EQ(tested_.status().state, refused ? State::foreign : State::on) << each.user << each.system;
    EXPECT_EQ(tested_.set(false), "");
    EXPECT_EQ(tested_.status().state, refused ? State::foreign : State::off) << each.user << each.system;
    EXPECT_TRUE(!refused || users() == each.user);
  }
}

TEST_F(AutostartTest, WhatElseStandsInTheEntryStays) {
  EXPECT_EQ(tested_.set(true), "");
  EXPECT_EQ(tested_.set(false), "");
  EXPECT_FALSE(fs::exists(*tested_.file())) << "an entry of ours without a purpose";
  const std::string mine =
      "# mine\n" + head + "Exec=env A=1 tavelo\nX-Delay=9\n[Desktop Action x]\nHidden=false\n";
  put("user", mine);
  EXPECT_EQ(tested_.set(false), "");
  EXPECT_EQ(tested_.status().state, State::off);
  EXPECT_EQ(tested_.set(true), "");
  EXPECT_EQ(users(), mine);
}

TEST_F(AutostartTest, WhatALinkLeadsToIsLeftAloneUnlessItIsAnEntry) {
  const auto other = top_ / "other";
  for (const bool dangles : {true, false}) {
    if (!dangles) std::ofstream(other) << "no entry";
    fs::create_directories(tested_.file()->parent_path());
    fs::remove(*tested_.file());
    fs::create_symlink(other, *tested_.file());
    EXPECT_EQ(tested_.set(true), "");
    EXPECT_EQ(tested_.status().state, State::on);
    EXPECT_EQ(fs::exists(other), !dangles);
    EXPECT_TRUE(dangles || fs::file_size(other) == 8);
  }
}

TEST_F(AutostartTest, FailureIsSaid) {
  fs::create_directories(*tested_.file());
  EXPECT_EQ(tested_.set(true), tested_.file()->string() + ": cannot be read");
  fs::remove_all(top_ / "user");
  std::ofstream(top_ / "user") << "a file in place of the folder";
  EXPECT_NE(tested_.set(true), "");
  Autostart homeless(std::nullopt, {}, "/usr/bin/tavelo");
  EXPECT_EQ(homeless.status().state, State::off);
  EXPECT_NE(homeless.set(true), "");
}

}  // namespace
}  // namespace tavelo::linuxdesktop
