#pragma once
// Records made into the models of a table: one at a time on this thread,
// or, from batches read ahead, a run of records at a time on this thread and
// a second at once. Reading a record changes nothing that the records after
// it are read by, save at a few moments (the decimal mark decided, a column
// found not to be a term). A run is read with forks of the row reader and
// the observer as they stood when it was handed out, and is kept only when
// no such moment fell between then and its turn, nor in it; else it is read
// again on this thread in its turn. So the table, its warnings and the
// first fault told are those of reading on one thread.
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "selection/input/candidate_reader.hpp"
#include "selection/input/delimited_reader.hpp"
#include "selection/input/load_candidates.hpp"

namespace drav::selection {

// What a run of records became on one thread, up to its first fault.
struct ModelsOfRun {
  std::vector<Candidate> models;
  std::vector<Estimate> estimates;     // by model, when a parameter is averaged
  std::vector<std::string> setValues;  // by model, when a --by column splits the sets
  std::exception_ptr fault;            // what stopped the run after `models`
};

class TableLoader {
 public:
  TableLoader(CandidateTable& table, CandidateReader& rows, const LoadOptions& options, std::string name,
              Diagnostics& diagnostics)
      : table_(table), rows_(rows), options_(options), name_(std::move(name)), diagnostics_(diagnostics) {}

  // The first line without a value in the --by column, where one is.
  std::optional<std::int64_t> FirstLineWithoutSet() const { return firstLineWithoutSet_; }

  // One record, into the table at once.
  void Add(std::span<const std::string_view> fields, std::int64_t line);

  // Every batch `reader` reads ahead from here on (TakeBatch), its records
  // shared out in runs between this thread and a second as each comes
  // free, and taken into the table in file order with the notes found
  // while reading them. Where no second thread can be had, this one reads
  // every run. A fault on the second thread is thrown here in its run's
  // turn.
  void AddShared(DelimitedReader& reader);

  // Records [begin, end) of a batch as models numbered on from `before`,
  // and after its last record the fault that stopped the file's reading.
  ModelsOfRun Read(CandidateReader& rows, ExtraColumnReader* observer, const RecordBatch& batch, std::size_t begin,
                std::size_t end, std::size_t before) const;

 private:
  void Read(CandidateReader& rows, ExtraColumnReader* observer, std::span<const std::string_view> fields, std::int64_t line,
            std::size_t before, ModelsOfRun& read) const;
  void Append(ModelsOfRun& read);
  void TellNotes(const RecordBatch& batch, std::size_t begin, std::size_t end, const ModelsOfRun& read) const;

  CandidateTable& table_;
  CandidateReader& rows_;
  const LoadOptions& options_;
  std::string name_;
  Diagnostics& diagnostics_;
  ModelsOfRun one_;
  std::unordered_map<std::string, std::uint32_t> setIndex_;
  std::optional<std::int64_t> firstLineWithoutSet_;
};

}  // namespace drav::selection
