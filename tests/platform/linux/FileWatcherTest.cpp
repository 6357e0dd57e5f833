#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/session/FileWatcher.h"

namespace tavelo::linuxdesktop {
namespace {

namespace fs = std::filesystem;

void write(const fs::path& file, const char* text) { std::ofstream(file) << text; }

TEST(FileWatcher, TellsOfEveryWayInWhichAFileChanges) {
  int count = 1;
  char name[] = "test";
  char* arguments[] = {name, nullptr};
  std::optional<QCoreApplication> application;
  if (QCoreApplication::instance() == nullptr) application.emplace(count, arguments);
  const QTemporaryDir folder;
  const fs::path top = folder.path().toStdString();
  const fs::path home = top / "config" / "Tavelo";
  const fs::path file = home / "tavelo.conf";
  const fs::path kept = top / "kept" / "conf";
  int told = 0;
  const FileWatcher watcher(file, [&] { ++told; });
  const auto isTold = [&] {
    const int before = told;
    const QDeadlineTimer deadline(10'000);
    while (told == before && !deadline.hasExpired())
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return told > before;
  };
  const struct {
    const char* what;
    std::function<void()> change;
  } changes[] = {
      {"the first of two missing folders is made", [&] { fs::create_directory(top / "config"); }},
      {"the second one too", [&] { fs::create_directory(home); }},
      {"the file is made", [&] { write(file, "a"); }},
      {"it is written in place", [&] { write(file, "b"); }},
      {"another file takes its place", [&] { write(home / "new", "c"), fs::rename(home / "new", file); }},
      {"it is removed", [&] { fs::remove(file); }},
      {"the folder goes", [&] { fs::rename(home, top / "away"); }},
      {"the folder comes back as a link", [&] { fs::create_directory_symlink(top / "away", home); }},
      {"that link leads elsewhere",
       [&] {
         fs::create_directory(top / "elsewhere");
         fs::create_directory_symlink(top / "elsewhere", top / "link");
         fs::rename(top / "link", home);
       }},
      {"a link takes its place",
       [&] {
         fs::create_directory(kept.parent_path());
         write(kept, "d");
         fs::create_symlink(kept, file);
       }},
      {"the target of the link is replaced",
       [&] { write(top / "kept" / "new", "e"), fs::rename(top / "kept" / "new", kept); }},
      {"the folders go", [&] { fs::rename(top / "config", top / "gone"); }},
      {"the folders come back", [&] { fs::create_directories(home); }},
  };
  for (const auto& each : changes) {
    each.change();
    EXPECT_TRUE(isTold()) << each.what;
  }
  write(top / "other", "");
  write(home / "other", "");
  const int before = told;
  const QDeadlineTimer deadline(500);
  while (!deadline.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  EXPECT_EQ(told, before) << "of another file";
}

}  // namespace
}  // namespace tavelo::linuxdesktop
