#include "selection/candidates.hpp"

#include <new>
#include <string>
#include <unordered_map>

#include "analysis/text.hpp"
#include "selection/candidate_row_reader.hpp"
#include "selection/errors.hpp"
#include "selection/table_warnings.hpp"

namespace drav::selection {

CandidateTable LoadCandidates(DelimitedReader& reader, const LoadOptions& options, Diagnostics& diagnostics) {
  CandidateTable table;
  table.source = reader.Name();
  if (!reader.Next()) throw DataError(reader.Name() + ": a header line but no models");
  std::vector<std::string> header = reader.Header();
  const bool rowNames = AlignHeader(header, reader.Fields());
  RowReader rows(reader, header, rowNames, options, diagnostics);
  if (options.readAhead) reader.ReadAhead();
  if (options.observer) options.observer->Start(header, rows.Roles());
  table.criterion = rows.Chosen();
  table.chat = rows.Chat();
  table.byName = rows.ByName();

  try {
    table.models.reserve(options.expectedModels);
    if (rows.Estimates()) table.estimates.reserve(options.expectedModels);
  } catch (const std::bad_alloc&) {
    // A machine that will not even promise the room grows the table as it goes.
  }
  std::unordered_map<std::string, std::uint32_t> setIndex;
  if (!rows.By()) table.sets.emplace_back();
  std::int64_t emptyByLine = 0;
  do {
    if (table.models.size() == options.maxModels) {
      throw DataError(reader.Name() + ":" + std::to_string(reader.Line()) + ": more than " +
                      std::to_string(options.maxModels) + " models; a table holds no more");
    }
    Candidate c = rows.Read(reader.Fields(), table.models.size() + 1);
    if (rows.By()) {
      std::string value(rows.Cell(*rows.By()));
      if (Trimmed(value).empty() && emptyByLine == 0) emptyByLine = c.line;
      const auto [where, isNew] = setIndex.try_emplace(value, static_cast<std::uint32_t>(table.sets.size()));
      if (isNew) table.sets.push_back(std::move(value));
      c.set = where->second;
    }
    if (options.observer) options.observer->Row(reader.Fields(), reader.Line(), rows.Decimal());
    table.models.push_back(std::move(c));
    if (rows.Estimates()) table.estimates.push_back(rows.ReadEstimate());
  } while (reader.Next());

  if (rows.Numbered()) {
    diagnostics.Note("no column names the models (model, name, modnames, formula, call; or --model COLUMN), "
                     "so they are numbered 1, 2, ... in file order");
  }
  WarnOfEmptySet(table, emptyByLine, diagnostics);
  WarnOfDifferentN(table, diagnostics);
  WarnOfRepeatedNames(table, diagnostics, options.threads);
  rows.WarnOfDisagreement(diagnostics);
  return table;
}

}  // namespace drav::selection
