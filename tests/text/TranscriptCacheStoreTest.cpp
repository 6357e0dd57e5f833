#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/FileManager.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/recognizer/TemporaryFolder.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

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
    setenv("XDG_DATA_HOME", (home_.path() / "data").c_str(), 1);
    file_ = transcriptCacheFile(files_);
    // Entries then have a fraction of a second.
    desktop_.advance(platform::Seconds{0.75});
  }
  TranscriptCacheStore makeStore() { return {files_, desktop_.workspace(), desktop_.loop()}; }

  void writeFile(const std::string& contents) {
    fs::create_directories(file_.parent_path());
    std::ofstream(file_, std::ios::binary) << contents;
  }

  std::size_t entriesOnDisk() {
    const auto json = files_.contents(file_);
    const auto entries = json ? TranscriptCacheDecoder().decode(*json) : std::nullopt;
    return entries ? entries->size() : 0;
  }

  const TemporaryFolder home_;
  fs::path file_;
  posix::PosixFileManager files_;
  simulated::SimulatedDesktop desktop_;
};

TEST_F(TranscriptCacheStoreTest, AnAdditionSurvivesARestartWithoutItsFractionOfASecond) {
  auto store = makeStore();
  EXPECT_TRUE(fs::is_directory(file_.parent_path()));
  EXPECT_FALSE(fs::exists(file_));
  store.add("một", "Một");
  desktop_.openApplication("Ghi chú");
  store.add("hai", "Hai", "en_US");
  auto before = store.recentEntries();
  ASSERT_EQ(before.size(), 2U);
  EXPECT_EQ(before[0].normalizedText, "Hai");
  EXPECT_EQ(before[0].localeIdentifier, "en_US");
  EXPECT_EQ(before[0].sourceAppName, "Ghi chú");
  EXPECT_EQ(before[0].sourceBundleIdentifier, std::nullopt);
  EXPECT_EQ(before[1].localeIdentifier, "vi_VN");
  EXPECT_EQ(before[1].sourceAppName, std::nullopt);
  EXPECT_EQ(before[1].createdAt, desktop_.loop().now());
  EXPECT_NE(before[0].id, before[1].id);

  const auto after = makeStore().recentEntries();
  for (auto& entry : before) entry.createdAt -= 750ms;
  EXPECT_EQ(after, before);
}

TEST_F(TranscriptCacheStoreTest, KeepsTheNewest200) {
  {
    auto store = makeStore();
    for (int i = 0; i <= 200; ++i) store.add(std::to_string(i), "x");
  }
  auto store = makeStore();
  const auto all = store.recentEntries(1000);
  ASSERT_EQ(all.size(), 200U);
  EXPECT_EQ(all.front().rawTranscript, "200");
  EXPECT_EQ(all.back().rawTranscript, "1");
  EXPECT_EQ(store.recentEntries().size(), 20U);
  EXPECT_EQ(store.recentEntries(0).size(), 0U);
}

TEST_F(TranscriptCacheStoreTest, ALongerFileIsReadWholeAndCutAtTheNextAddition) {
  writeFile(TranscriptCacheEncoder().encode(std::vector<TranscriptCacheEntry>(350)));
  auto store = makeStore();
  EXPECT_EQ(store.recentEntries(1000).size(), 350U);
  store.add("a", "A");
  EXPECT_EQ(store.recentEntries(1000).size(), 200U);
  EXPECT_EQ(entriesOnDisk(), 200U);
}

TEST_F(TranscriptCacheStoreTest, AnUnreadableFileCountsAsEmptyAndStaysUntilTheNextAddition) {
  for (const std::string unreadable : {"{}", "", "[{\"id\":\"x\"}]", "[", "\xFF"}) {
    writeFile(unreadable);
    auto store = makeStore();
    EXPECT_TRUE(store.recentEntries().empty());
    EXPECT_EQ(files_.contents(file_), unreadable);
    store.add("a", "A");
    EXPECT_EQ(entriesOnDisk(), 1U);
  }
}

TEST_F(TranscriptCacheStoreTest, AnUnusableFolderCountsAsEmptyThoughItsFileCouldBeRead) {
  UnusableFolder files;
  TranscriptCacheStore store(files, desktop_.workspace(), desktop_.loop());
  EXPECT_TRUE(store.recentEntries().empty());
}

TEST_F(TranscriptCacheStoreTest, AFailedSaveIsMadeUpForByTheNext) {
  writeFile("");
  fs::remove_all(file_.parent_path());
  std::ofstream(file_.parent_path()) << "a file where the folder should be";
  auto store = makeStore();
  store.add("một", "Một");
  fs::remove(file_.parent_path());
  fs::create_directories(file_.parent_path());
  store.add("hai", "Hai");
  EXPECT_EQ(entriesOnDisk(), 2U);
}

TEST_F(TranscriptCacheStoreTest, ForgottenTextsAreGoneFromTheFolderAndStayAway) {
  auto store = makeStore();
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
  EXPECT_EQ(TranscriptCacheStore(unusable, desktop_.workspace(), desktop_.loop())
                .forget(TranscriptCacheFile::everything),
            std::nullopt);
}

TEST_F(TranscriptCacheStoreTest, WithoutAHomeTheTemporaryDirectoryServes) {
  unsetenv("XDG_DATA_HOME");
  setenv("HOME", "", 1);
  setenv("TMPDIR", home_.path().c_str(), 1);
  auto store = makeStore();
  store.add("a", "A");
  EXPECT_TRUE(fs::exists(home_.path() / "Tavelo" / "transcript-cache.json"));
}

}  // namespace
}  // namespace tavelo
