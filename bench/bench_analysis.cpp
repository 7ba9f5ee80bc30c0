// Speed of the analysis core: one whole run of 99 models from the file to
// the report text, the same with the models at the head of a 1 GB file, and
// Format and Val on their own. Goal: a whole run under 50 microseconds.
//
//   build/bench/bench_analysis --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "analysis/analysis_run.hpp"
#include "analysis/format.hpp"
#include "analysis/val.hpp"

namespace {

class Window : public drav::WindowOps {
 public:
  std::string CountText() override { return "99"; }
  void FocusCount() override {}
  void SetResultsVisible(bool) override {}
  std::string ResultsText() override { return {}; }  // every run starts on an empty area
  void SetResultsText(const std::string& text) override { benchmark::DoNotOptimize(text.data()); }
};

class Silent : public drav::Alert {
 public:
  void MsgBox(const std::string&) override {}
};

class Answered : public drav::OpenFileDialog {
 public:
  explicit Answered(std::filesystem::path path) : path_(std::move(path)) {}
  std::optional<drav::FolderItem> ShowModal() override { return drav::FolderItem(path_); }

 private:
  std::filesystem::path path_;
};

class Dates : public drav::DateText {
 public:
  std::string ShortDate(const drav::Date&) const override { return "11/22/26"; }
  std::string ShortTime(const drav::Date&) const override { return "9:58 PM"; }
};

const std::filesystem::path kExample = std::filesystem::path(DRAV_SOURCE_DIR) / "examples/ninety-nine-models.txt";

void RunOn(benchmark::State& state, const std::filesystem::path& file) {
  Window window;
  Silent alert;
  Answered dialog(file);
  Dates dates;
  for (auto _ : state) {
    if (drav::RunAnalysis({window, alert, dialog, dates}) != drav::RunOutcome::Reported) {
      state.SkipWithError("the run did not reach the report");
      break;
    }
  }
}

void WholeRun99Models(benchmark::State& state) { RunOn(state, kExample); }
BENCHMARK(WholeRun99Models);

// The 99 models stand in the first lines of a sparse 1 GB file.
void WholeRun99ModelsIn1GBFile(benchmark::State& state) {
  const auto big = std::filesystem::temp_directory_path() / "drav-bench-1gb.txt";
  {
    std::ifstream in(kExample, std::ios::binary);
    std::ofstream out(big, std::ios::binary | std::ios::trunc);
    out << in.rdbuf();
  }
  std::filesystem::resize_file(big, std::uintmax_t{1} << 30);
  RunOn(state, big);
  std::filesystem::remove(big);
}
BENCHMARK(WholeRun99ModelsIn1GBFile);

void FormatAllFourMasks(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(drav::Format(-35403.436, "+########0.0###"));
    benchmark::DoNotOptimize(drav::Format(7.476, "#######0.0###"));
    benchmark::DoNotOptimize(drav::Format(0.61337, "0.0###"));
    benchmark::DoNotOptimize(drav::Format(73570.5412, "#####0.0#"));
  }
}
BENCHMARK(FormatAllFourMasks);

void ValOfPrintedNumbers(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(drav::Val("-35403.436"));
    benchmark::DoNotOptimize(drav::Val("0.6134"));
    benchmark::DoNotOptimize(drav::Val("73570.54"));
    benchmark::DoNotOptimize(drav::Val("1.5E+3"));
  }
}
BENCHMARK(ValOfPrintedNumbers);

}  // namespace

BENCHMARK_MAIN();
