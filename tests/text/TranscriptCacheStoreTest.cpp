#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Workspace.h"
#include "platform/posix/PosixFileManager.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

struct StoppedClock final : platform::Clock {
  platform::WallTime now() const override { return time; }
  platform::Uptime uptime() const override { return {}; }
  platform::WallTime time = std::chrono::sys_days{2025y / 3 / 14} + 8h + 5min + 9s + 750ms;
};

struct Application final : platform::RunningApplication {
  std::optional<std::string> localizedName() const override { return "Ghi chú"; }
  std::optional<std::string> bundleIdentifier() const override { return std::nullopt; }
  platform::ProcessIdentifier processIdentifier() const override { return 1; }
  bool isTerminated() const override { return false; }
  bool activate(platform::ActivationOptions) override { return false; }
};

struct Applications final : platform::Workspace {
  std::shared_ptr<platform::RunningApplication> frontmostApplication() override { return frontmost; }
  bool windowsMayBeTranslucent() override { return false; }
  bool open(const std::string&) override { return false; }
  std::shared_ptr<platform::RunningApplication> frontmost;
};

/// Shows a readable file in a folder that cannot be used.
struct UnusableFolder final : platform::FileManager {
  std::optional<fs::path> applicationSupportDirectory() const override { return "/nowhere"; }
  fs::path temporaryDirectory() const override { return "/nowhere"; }
  bool createDirectory(const fs::path&) override { return false; }
  bool fileExists(const fs::path&) const override { return true; }
  std::optional<std::string> contents(const fs::path&) const override {
    return TranscriptCacheEncoder().encode(std::vector<TranscriptCacheEntry>(1));
  }
  bool writeAtomically(const fs::path&, std::string_view) override { return false; }
};

/// Uses a temporary data folder on the real file system.
class TranscriptCacheStoreTest : public testing::Test {
 protected:
  TranscriptCacheStoreTest() {
    std::string name = (fs::temp_directory_path() / "tavelo-store-XXXXXX").string();
    home_ = mkdtemp(name.data());
    setenv("XDG_DATA_HOME", (home_ / "data").c_str(), 1);
    file_ = transcriptCacheFile(files_);
  }
  ~TranscriptCacheStoreTest() override { fs::remove_all(home_); }

  void writeFile(const std::string& contents) {
    fs::create_directories(file_.parent_path());
    std::ofstream(file_, std::ios::binary) << contents;
  }

  std::size_t entriesOnDisk() {
    const auto json = files_.contents(file_);
    const auto entries = json ? TranscriptCacheDecoder().decode(*json) : std::nullopt;
    return entries ? entries->size() : 0;
  }

  fs::path home_;
  fs::path file_;
  posix::PosixFileManager files_;
  Applications workspace_;
  StoppedClock clock_;
};

TEST_F(TranscriptCacheStoreTest, AnAdditionSurvivesARestartWithoutItsFractionOfASecond) {
  auto store = std::make_unique<TranscriptCacheStore>(files_, workspace_, clock_);
  EXPECT_TRUE(fs::is_directory(file_.parent_path()));
  EXPECT_FALSE(fs::exists(file_));
  store->add("một", "Một");
  workspace_.frontmost = std::make_shared<Application>();
  store->add("hai", "Hai", "en_US");
  auto before = store->recentEntries();
  ASSERT_EQ(before.size(), 2U);
  EXPECT_EQ(before[0].normalizedText, "Hai");
  EXPECT_EQ(before[0].localeIdentifier, "en_US");
  EXPECT_EQ(before[0].sourceAppName, "Ghi chú");
  EXPECT_EQ(before[0].sourceBundleIdentifier, std::nullopt);
  EXPECT_EQ(before[1].localeIdentifier, "vi_VN");
  EXPECT_EQ(before[1].sourceAppName, std::nullopt);
  EXPECT_EQ(before[1].createdAt, clock_.time);
  EXPECT_NE(before[0].id, before[1].id);

  const auto after = TranscriptCacheStore(files_, workspace_, clock_).recentEntries();
  for (auto& entry : before) entry.createdAt -= 750ms;
  EXPECT_EQ(after, before);
}

TEST_F(TranscriptCacheStoreTest, KeepsTheNewest200) {
  {
    TranscriptCacheStore store(files_, workspace_, clock_);
    for (int i = 0; i <= 200; ++i) store.add(std::to_string(i), "x");
  }
  TranscriptCacheStore store(files_, workspace_, clock_);
  const auto all = store.recentEntries(1000);
  ASSERT_EQ(all.size(), 200U);
  EXPECT_EQ(all.front().rawTranscript, "200");
  EXPECT_EQ(all.back().rawTranscript, "1");
  EXPECT_EQ(store.recentEntries().size(), 20U);
  EXPECT_EQ(store.recentEntries(0).size(), 0U);
}

TEST_F(TranscriptCacheStoreTest, ALongerFileIsReadWholeAndCutAtTheNextAddition) {
  writeFile(TranscriptCacheEncoder().encode(std::vector<TranscriptCacheEntry>(350)));
  TranscriptCacheStore store(files_, workspace_, clock_);
  EXPECT_EQ(store.recentEntries(1000).size(), 350U);
  store.add("a", "A");
  EXPECT_EQ(store.recentEntries(1000).size(), 200U);
  EXPECT_EQ(entriesOnDisk(), 200U);
}

TEST_F(TranscriptCacheStoreTest, AnUnreadableFileCountsAsEmptyAndStaysUntilTheNextAddition) {
  for (const std::string unreadable : {"{}", "", "[{\"id\":\"x\"}]", "[", "\xFF"}) {
    writeFile(unreadable);
    TranscriptCacheStore store(files_, workspace_, clock_);
    EXPECT_TRUE(store.recentEntries().empty());
    EXPECT_EQ(files_.contents(file_), unreadable);
    store.add("a", "A");
    EXPECT_EQ(entriesOnDisk(), 1U);
  }
}

TEST_F(TranscriptCacheStoreTest, AnUnusableFolderCountsAsEmptyThoughItsFileCouldBeRead) {
  UnusableFolder files;
  EXPECT_TRUE(TranscriptCacheStore(files, workspace_, clock_).recentEntries().empty());
}

TEST_F(TranscriptCacheStoreTest, AFailedSaveIsMadeUpForByTheNext) {
  writeFile("");
  fs::remove_all(file_.parent_path());
  std::ofstream(file_.parent_path()) << "a file where the folder should be";
  TranscriptCacheStore store(files_, workspace_, clock_);
  store.add("một", "Một");
  fs::remove(file_.parent_path());
  fs::create_directories(file_.parent_path());
  store.add("hai", "Hai");
  EXPECT_EQ(entriesOnDisk(), 2U);
}

TEST_F(TranscriptCacheStoreTest, ForgottenTextsAreGoneFromTheFolderAndStayAway) {
  TranscriptCacheStore store(files_, workspace_, clock_);
  for (const auto* text : {"một", "hai", "ba"}) store.add(text, text);
  // What a writer left that was killed.
  std::ofstream(file_.parent_path() / ".transcript-cache.json.new") << "ba";
  EXPECT_EQ(store.forget(2), 2U);
  store.add("bốn", "bốn");
  std::string folder;
  for (const auto& each : fs::directory_iterator(file_.parent_path()))
    folder += files_.contents(each).value_or("");
  EXPECT_EQ(folder.find("hai"), std::string::npos);
  EXPECT_EQ(folder.find("\"ba\""), std::string::npos);
  EXPECT_EQ(entriesOnDisk(), 2U);
  EXPECT_EQ(store.forget(TranscriptCacheFile::everything), 2U);
  writeFile("[damaged: bốn");
  EXPECT_EQ(store.forget(1), 0U);
  EXPECT_EQ(files_.contents(file_), "[damaged: bốn");
  EXPECT_EQ(store.forget(TranscriptCacheFile::everything), 0U);
  EXPECT_EQ(files_.contents(file_), "[]");
  UnusableFolder unusable;
  EXPECT_EQ(TranscriptCacheStore(unusable, workspace_, clock_).forget(TranscriptCacheFile::everything),
            std::nullopt);
}

TEST_F(TranscriptCacheStoreTest, WithoutAHomeTheTemporaryDirectoryServes) {
  unsetenv("XDG_DATA_HOME");
  setenv("HOME", "", 1);
  setenv("TMPDIR", home_.c_str(), 1);
  TranscriptCacheStore store(files_, workspace_, clock_);
  store.add("a", "A");
  EXPECT_TRUE(fs::exists(home_ / "Tavelo" / "transcript-cache.json"));
}

}  // namespace
}  // namespace tavelo
