// The cost of one run through the window as the report area fills: 300 runs
// of the five-model example, each appended behind the ones before, as a user
// who never clears would make them. Prints the time of runs 1, 100 and 300
// (each the median of its neighbourhood) and the peak memory. A run that
// grows with the text already there shows as a rising line.
//   bench_report_appends [RUNS]   (offscreen unless QT_QPA_PLATFORM is set)
#include <sys/resource.h>

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "analysis/analysis_run.hpp"
#include "analysis/locale_date_text.hpp"
#include "shell/application.hpp"
#include "shell/implicit.hpp"
#include "windows/control_wnd.hpp"
#include "windows/control_wnd_ops.hpp"

namespace {

class SilentAlert : public drav::Alert {
 public:
  void MsgBox(const std::string& text) override { std::fprintf(stderr, "unexpected message: %s\n", text.c_str()); }
};

class ExampleDialog : public drav::OpenFileDialog {
 public:
  std::optional<drav::FolderItem> ShowModal() override {
    return drav::FolderItem(DRAV_SOURCE_DIR "/examples/five-models.txt");
  }
};

double MedianAround(const std::vector<double>& ms, std::size_t run) {
  const std::size_t from = run > 3 ? run - 3 : 0;
  const std::size_t to = std::min(ms.size(), run + 2);
  std::vector<double> near(ms.begin() + static_cast<std::ptrdiff_t>(from), ms.begin() + static_cast<std::ptrdiff_t>(to));
  std::nth_element(near.begin(), near.begin() + static_cast<std::ptrdiff_t>(near.size() / 2), near.end());
  return near[near.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  drav::Application app(argc, argv);
  const std::size_t runs = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 300;

  drav::ControlWnd& window = drav::Implicit<drav::ControlWnd>();
  window.Show();
  window.pFld().SetText("5");
  drav::ControlWndOps ops(window);
  SilentAlert alert;
  ExampleDialog dialog;
  const drav::LocaleDateText dates;

  std::vector<double> ms;
  for (std::size_t i = 0; i < runs; ++i) {
    const auto start = std::chrono::steady_clock::now();
    if (drav::RunAnalysis({ops, alert, dialog, dates}) != drav::RunOutcome::Reported) return 1;
    QApplication::processEvents();  // the area lays out and paints what it got
    ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  for (std::size_t run : {std::size_t{1}, std::size_t{100}, std::size_t{300}}) {
    if (run <= runs) std::printf("run %3zu: %.2f ms\n", run, MedianAround(ms, run));
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("peak memory: %ld MB, report %zu characters\n", usage.ru_maxrss / 1024, window.ResultsFld().Text().size());
  return 0;
}
