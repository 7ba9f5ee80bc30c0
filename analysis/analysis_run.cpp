#include "analysis/analysis_run.hpp"

#include "analysis/end_of_line.hpp"
#include "analysis/model_reader.hpp"
#include "analysis/report.hpp"
#include "analysis/statistics.hpp"
#include "analysis/val.hpp"

namespace drav {

RunOutcome RunAnalysis(const RunHost& host) {
  TextTable ModelTextTable(kMaxModels, kTextColumns);
  NumberTable ModelStatTable(kMaxModels, kStatColumns);
  const std::string& lineEnd = EndOfLine::Build();

  if (host.window.CountText().empty()) {
    host.alert.MsgBox(kCountMissingMessage + EndOfLine::Platform());
    host.window.FocusCount();
    return RunOutcome::CountMissing;
  }
  // Both limits are tested on the full value, before truncation, so 99.5 is
  // refused while 2.5 passes and counts as 2.
  if (Val(host.window.CountText()) < 2 || Val(host.window.CountText()) > 99) {
    host.alert.MsgBox(kCountInvalidMessage + EndOfLine::Platform());
    host.window.FocusCount();
    return RunOutcome::CountInvalid;
  }
  const auto modelCount = static_cast<std::int64_t>(Val(host.window.CountText()));
  const auto rows = static_cast<std::int32_t>(modelCount);
  ModelTextTable.Redim(rows, kTextColumns);
  ModelStatTable.Redim(rows, kStatColumns);

  std::optional<FolderItem> chosenFile = host.dialog.ShowModal();
  if (!chosenFile || !chosenFile->Exists()) return RunOutcome::NoFile;

  {
    TextInputStream modelStream = TextInputStream::Open(*chosenFile);
    modelStream.SetEncoding(Encodings::UTF8);
    ReadModels(modelStream, modelCount, ModelTextTable, ModelStatTable);
  }  // the file is closed as soon as its lines are in the tables

  if (ComputeStatistics(ModelStatTable, modelCount) == 0) {
    host.alert.MsgBox(kNoLowestAICMessage);
    host.window.FocusCount();
    return RunOutcome::NoLowestAIC;
  }

  host.window.SetResultsVisible(true);
  const Date reportDate;
  const ReportHeading heading{host.dates.ShortDate(reportDate), host.dates.ShortTime(reportDate), chosenFile->Name()};
  // The report is composed whole and appended in one step; nothing can see
  // the area between the pieces, and one append keeps a long report quick.
  host.window.SetResultsText(host.window.ResultsText() +
                             ComposeReport(ModelTextTable, ModelStatTable, modelCount, heading, lineEnd));
  return RunOutcome::Reported;
}

}  // namespace drav
