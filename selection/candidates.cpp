#include "selection/candidates.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <future>
#include <memory>
#include <new>
#include <string>
#include <unordered_map>

#include "analysis/text.hpp"
#include "selection/candidate_row_reader.hpp"
#include "selection/errors.hpp"
#include "selection/table_warnings.hpp"

namespace drav::selection {
namespace {

// What a run of records became on one thread, up to its first fault.
struct RowsRead {
  std::vector<Candidate> models;
  std::vector<Estimate> estimates;          // by model, when a parameter is averaged
  std::vector<std::string> setValues;       // by model, when a --by column splits the sets
  std::exception_ptr fault;                 // what stopped the run after `models`
};

// Records become models one after another, on this thread or, a run of
// records at a time, on this one and a second at once. Reading a record
// changes nothing that the records after it are read by, save at a few
// moments (the decimal mark decided, a column found not to be a term); a
// run read on either thread is kept only when no such moment fell before it
// or in it, and is read again here otherwise, so the table, its warnings and
// the first fault told are those of reading on one thread.
class TableLoader {
 public:
  TableLoader(CandidateTable& table, RowReader& rows, const LoadOptions& options, std::string name)
      : table_(table), rows_(rows), options_(options), name_(std::move(name)) {}

  std::int64_t EmptyByLine() const { return emptyByLine_; }

  // One record, into the table at once.
  void Add(std::span<const std::string_view> fields, std::int64_t line) {
    one_.models.clear();
    one_.estimates.clear();
    one_.setValues.clear();
    Read(rows_, options_.observer, fields, line, table_.models.size(), one_);
    Take(one_);
  }

  // Batches read ahead, their records shared out in runs between this
  // thread and a second as each is free, and taken in file order.
  void Add(std::span<const RecordBatch> batches) {
    // While the cells have not yet decided the decimal mark, any record may.
    if (!rows_.Decimal().Settled()) {
      for (const RecordBatch& batch : batches) Take(Read(rows_, options_.observer, batch, 0, batch.Records()));
      return;
    }
    std::vector<Run> runs;
    std::size_t before = table_.models.size();
    for (const RecordBatch& batch : batches) {
      for (std::size_t begin = 0; begin < batch.Records(); begin += kRunRecords) {
        const std::size_t end = std::min(batch.Records(), begin + kRunRecords);
        runs.push_back({&batch, begin, end, before, rows_.Fork(),
                        options_.observer ? options_.observer->Fork() : nullptr, {}});
        before += end - begin;
      }
    }
    std::atomic<std::size_t> next = 0;
    const auto work = [this, &runs, &next] {
      for (std::size_t i = next++; i < runs.size(); i = next++) {
        Run& run = runs[i];
        run.read = Read(run.rows, run.observer.get(), *run.batch, run.begin, run.end, run.before);
      }
    };
    std::future<void> second = std::async(std::launch::async, work);
    work();
    second.get();
    for (Run& run : runs) {
      const bool forked = !options_.observer || (run.observer && options_.observer->Join(*run.observer));
      if (forked) {
        rows_.Join(run.rows);
        Take(run.read);
      } else {
        Take(Read(rows_, options_.observer, *run.batch, run.begin, run.end, table_.models.size()));
      }
    }
  }

 private:
  // Records a run: few enough that the two threads end a batch together.
  static constexpr std::size_t kRunRecords = 1024;

  // Records [begin, end) of a batch, read with forks of the readers that
  // stood as this thread's do when the run was handed out. A cache line or
  // more each: two threads write two runs at once.
  struct alignas(64) Run {
    const RecordBatch* batch;
    std::size_t begin, end;
    std::size_t before;  // models before the run
    RowReader rows;
    std::unique_ptr<RowObserver> observer;  // none where there is no observer or it cannot fork
    RowsRead read;
  };

  RowsRead Read(RowReader& rows, RowObserver* observer, const RecordBatch& batch, std::size_t begin,
                std::size_t end) const {
    return Read(rows, observer, batch, begin, end, table_.models.size());
  }

  // Records [begin, end) of a batch as models numbered on from `before`,
  // and after its last record the fault that stopped the file's reading.
  RowsRead Read(RowReader& rows, RowObserver* observer, const RecordBatch& batch, std::size_t begin,
                std::size_t end, std::size_t before) const {
    RowsRead read;
    read.models.reserve(end - begin);
    std::string unquoted;
    std::vector<std::string_view> fields;
    for (std::size_t r = begin; r < end && !read.fault; ++r) {
      batch.Fields(r, unquoted, fields);
      Read(rows, observer, fields, batch.lines[r], before + (r - begin), read);
    }
    if (!read.fault && end == batch.Records()) read.fault = batch.error;
    return read;
  }

  // One record as the model after `before` others, or the fault it holds.
  void Read(RowReader& rows, RowObserver* observer, std::span<const std::string_view> fields, std::int64_t line,
            std::size_t before, RowsRead& read) const {
    try {
      if (before == options_.maxModels) {
        throw DataError(name_ + ":" + std::to_string(line) + ": more than " + std::to_string(options_.maxModels) +
                        " models; a table holds no more");
      }
      Candidate c = rows.Read(fields, line, before + 1);
      if (rows.By()) read.setValues.emplace_back(rows.Cell(*rows.By()));
      if (observer) observer->Row(fields, line, rows.Decimal());
      if (rows.Estimates()) read.estimates.push_back(rows.ReadEstimate());
      read.models.push_back(std::move(c));
    } catch (...) {
      read.fault = std::current_exception();
    }
  }

  // The models read, in their sets, then the fault that ended the run.
  void Take(RowsRead& read) {
    for (std::size_t i = 0; i < read.models.size(); ++i) {
      Candidate& c = read.models[i];
      if (rows_.By()) {
        std::string& value = read.setValues[i];
        if (Trimmed(value).empty() && emptyByLine_ == 0) emptyByLine_ = c.line;
        const auto [where, isNew] = setIndex_.try_emplace(value, static_cast<std::uint32_t>(table_.sets.size()));
        if (isNew) table_.sets.push_back(std::move(value));
        c.set = where->second;
      }
      table_.models.push_back(std::move(c));
    }
    table_.estimates.insert(table_.estimates.end(), read.estimates.begin(), read.estimates.end());
    if (read.fault) std::rethrow_exception(read.fault);
  }
  void Take(RowsRead&& read) { Take(read); }

  CandidateTable& table_;
  RowReader& rows_;
  const LoadOptions& options_;
  std::string name_;
  RowsRead one_;
  std::unordered_map<std::string, std::uint32_t> setIndex_;
  std::int64_t emptyByLine_ = 0;
};

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
  if (!reader.Next()) throw DataError(reader.Name() + ": a header line but no models");
  std::vector<std::string> header = reader.Header();
  const bool rowNames = AlignHeader(header, reader.Fields());
  RowReader rows(reader, header, rowNames, options, diagnostics);
  const bool shared = options.readAhead && options.threads >= 2;
  if (options.readAhead) reader.ReadAhead();
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
  TableLoader loader(table, rows, options, reader.Name());
  loader.Add(reader.Fields(), reader.Line());
  if (shared) {
    // Two batches at a time: enough records that sharing them costs
    // little, few enough that the reading thread stays ahead.
    std::vector<RecordBatch> batches;
    while (std::optional<RecordBatch> batch = reader.TakeBatch()) {
      batches.push_back(std::move(*batch));
      if (batches.size() < 2 && !batches.back().last) continue;
      loader.Add(batches);
      batches.clear();
    }
    loader.Add(batches);
  } else {
    while (reader.Next()) loader.Add(reader.Fields(), reader.Line());
  }

  if (rows.Numbered()) {
    diagnostics.Note("no column names the models (model, name, modnames, formula, call; or --model COLUMN), "
                     "so they are numbered 1, 2, ... in file order");
  }
  WarnOfEmptySet(table, loader.EmptyByLine(), diagnostics);
  WarnOfDifferentN(table, diagnostics);
  WarnOfRepeatedNames(table, diagnostics, options.threads);
  rows.WarnOfDisagreement(diagnostics);
  return table;
}

}  // namespace drav::selection
