// Bound: with 200 entries, an addition takes under 5 ms, not counting the flush to the disk. The three
// figures show an addition without a file, without the flush, and with both.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/Dictation.h"
#include "platform/Workspace.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "text/TextNormalizer.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo::bench {
namespace {

class NoApplications final : public platform::Workspace {
 public:
  std::shared_ptr<platform::RunningApplication> frontmostApplication() override { return nullptr; }
  bool windowsMayBeTranslucent() override { return false; }
  bool open(const std::string&) override { return false; }
};

enum class Writing { none, withoutFlush, whole };

/// Files in a temporary folder of their own. `Writing` says how much of a write is done.
class BenchFiles final : public platform::FileManager {
 public:
  explicit BenchFiles(Writing writing) : writing_(writing) {
    std::string name = (files_.temporaryDirectory() / "tavelo-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    folder_ = name;
  }
  ~BenchFiles() override { std::filesystem::remove_all(folder_); }
  BenchFiles(const BenchFiles&) = delete;
  BenchFiles& operator=(const BenchFiles&) = delete;

  std::optional<std::filesystem::path> applicationSupportDirectory() const override { return folder_; }
  std::filesystem::path temporaryDirectory() const override { return folder_; }
  bool createDirectory(const std::filesystem::path& folder) override {
    return files_.createDirectory(folder);
  }
  bool fileExists(const std::filesystem::path& path) const override { return files_.fileExists(path); }
  std::optional<std::string> contents(const std::filesystem::path& file) const override {
    return files_.contents(file);
  }
  bool writeAtomically(const std::filesystem::path& file, std::string_view contents) override {
    if (writing_ == Writing::whole) return files_.writeAtomically(file, contents);
    if (writing_ == Writing::none) return true;
    const std::filesystem::path replacement = file.string() + ".new";
    std::ofstream(replacement, std::ios::binary) << contents;
    std::filesystem::rename(replacement, file);
    return true;
  }

 private:
  posix::PosixFileManager files_;
  Writing writing_;
  std::filesystem::path folder_;
};

void addToFullCache(benchmark::State& state, Writing writing) {
  BenchFiles files(writing);
  NoApplications workspace;
  posix::SystemClock clock;
  TranscriptCacheStore store(files, workspace, clock);
  const std::string raw = dictation(400);
  const std::string finished = TextNormalizer::normalize(raw);
  for (std::size_t i = 0; i < TranscriptCacheStore::maxEntries; ++i) store.add(raw, finished);
  for (auto _ : state) store.add(raw, finished);
}

BENCHMARK_CAPTURE(addToFullCache, withoutFile, Writing::none)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(addToFullCache, withoutFlush, Writing::withoutFlush)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(addToFullCache, whole, Writing::whole)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
}  // namespace tavelo::bench
