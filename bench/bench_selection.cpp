// The stages of a selection table on 100,000 models held in a temporary
// file: reading and loading, ranking, and writing CSV. The whole process on
// a million models is timed by bench/selection_table.sh.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "selection/input/load_candidates.hpp"
#include "selection/models/ranking.hpp"
#include "selection/output/delimited_writer.hpp"
#include "selection/output/table_layout.hpp"

namespace {

using namespace drav::selection;

std::FILE* ModelsFile() {
  static std::FILE* file = [] {
    std::FILE* f = std::tmpfile();
    std::fputs("model,loglik,k,n\n", f);
    for (int i = 0; i < 100000; ++i) std::fprintf(f, "model%07d,%.6f,%d,500\n", i, -1000 - (i * 7919 % 20000) / 100.0, 2 + i % 10);
    return f;
  }();
  std::rewind(file);
  return file;
}

CandidateTable Load() {
  Diagnostics diagnostics;
  DelimitedReader reader(ModelsFile(), "models.csv", diagnostics);
  return LoadCandidates(reader, {}, diagnostics);
}

void BM_Load(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Load());
}
BENCHMARK(BM_Load)->Unit(benchmark::kMillisecond);

void BM_Rank(benchmark::State& state) {
  const CandidateTable table = Load();
  for (auto _ : state) benchmark::DoNotOptimize(Rank(table, {}));
}
BENCHMARK(BM_Rank)->Unit(benchmark::kMillisecond);

void BM_WriteCsv(benchmark::State& state) {
  const CandidateTable table = Load();
  const auto ranked = Rank(table, {});
  const OutputTable layout = SelectionLayout(table, ranked, 0.95);
  std::size_t bytes = 0;
  for (auto _ : state) {
    OutputBuffer out([&](std::string_view chunk) { bytes += chunk.size(); });
    WriteDelimited(layout, ',', out);
  }
  benchmark::DoNotOptimize(bytes);
}
BENCHMARK(BM_WriteCsv)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
