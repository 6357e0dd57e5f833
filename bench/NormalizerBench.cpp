// Bounds: at least 50 MB/s and 30 times the speed of the peer, from 1 KB to 1 MB. The cost per byte at 1 MB
// is at most 1.3 times that at 1 KB. Compare only figures of the same run.
#include <cstddef>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/Dictation.h"
#include "bench/StepwiseNormalizer.h"
#include "text/TextNormalizer.h"

namespace tavelo::bench {
namespace {

void countBytes(benchmark::State& state, const std::string& text) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void normalize(benchmark::State& state) {
  const std::string text = dictation(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(TextNormalizer::normalize(text));
  countBytes(state, text);
}

void normalizeStepwiseWithIcu(benchmark::State& state) {
  const std::string text = dictation(static_cast<std::size_t>(state.range(0)));
  StepwiseNormalizer peer(StepwiseNormalizer::Search::collation);
  if (peer.normalize(text) != TextNormalizer::normalize(text)) state.SkipWithError("the peer disagrees");
  for (auto _ : state) benchmark::DoNotOptimize(peer.normalize(text));
  countBytes(state, text);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  for (const std::int64_t size : {100L, 1024L, 65536L, 1048576L}) benchmark->Arg(size);
}

BENCHMARK(normalize)->Apply(sizes);
BENCHMARK(normalizeStepwiseWithIcu)->Apply(sizes);

}  // namespace
}  // namespace tavelo::bench
