#include "selection/input/load_candidates.hpp"

#include <algorithm>
#include <new>
#include <string>

#include "base/errors.hpp"
#include "selection/input/candidate_reader.hpp"
#include "selection/input/table_loader.hpp"
#include "selection/input/table_warnings.hpp"

namespace drav::selection {
namespace {

// Twice as many records as the input holds of the first one's length, at
// most as many as a table may hold; 0 for an input of unknown size.
std::size_t ExpectedRecords(const LoadOptions& options, std::span<const std::string_view> first) {
  std::uint64_t recordBytes = first.size();  // its separators and line end
  for (std::string_view field : first) recordBytes += field.size();
  return static_cast<std::size_t>(std::min<std::uint64_t>(options.inputBytes / recordBytes * 2, options.maxModels));
}

}  // namespace

CandidateTable LoadCandidates(DelimitedReader& reader, const LoadOptions& options, Diagnostics& diagnostics) {
  CandidateTable table;
  table.source = reader.Name();
  if (!reader.Next()) Refuse({.file = reader.Name(), .text = "a header line but no models"});
  std::vector<std::string> header = reader.Header();
  const bool rowNames = AlignHeader(header, reader.Fields());
  CandidateReader rows(reader, header, rowNames, options, diagnostics);
  const bool shared = options.readAhead && reader.ReadAhead() && options.threads >= 2;
  if (options.observer) options.observer->Start(header, rows.Roles(), ExpectedRecords(options, reader.Fields()));
  table.criterion = rows.Chosen();
  table.chat = rows.Chat();
  table.byName = rows.ByName();

  try {
    table.models.reserve(options.expectedModels);
    if (rows.Estimates()) table.estimates.reserve(options.expectedModels);
  } catch (const std::bad_alloc&) {
    // A machine that will not even promise the room grows the table as it goes.
  }
  if (!rows.By()) table.sets.emplace_back();
  TableLoader loader(table, rows, options, reader.Name(), diagnostics);
  loader.Add(reader.Fields(), reader.Line());
  if (shared) {
    loader.AddShared(reader);
  } else {
    while (reader.Next()) loader.Add(reader.Fields(), reader.Line());
  }

  if (rows.Numbered()) {
    diagnostics.Note("no column names the models (model, name, modnames, formula, call; or --model COLUMN), "
                     "so they are numbered 1, 2, ... in file order");
  }
  WarnOfEmptySet(table, loader.FirstLineWithoutSet(), diagnostics);
  WarnOfDifferentN(table, diagnostics);
  WarnOfRepeatedNames(table, diagnostics, options.threads);
  rows.WarnOfDisagreement(diagnostics);
  return table;
}

}  // namespace drav::selection
