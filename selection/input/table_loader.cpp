#include "selection/input/table_loader.hpp"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <optional>

#include "base/errors.hpp"
#include "base/text.hpp"
#include "selection/parallel/second_thread.hpp"

namespace drav::selection {
namespace {

// Records a run: few enough that the two threads stay busy to the end.
constexpr std::size_t kRunRecords = 1024;
// Runs handed out and not yet taken at most: the batches they hold are
// the memory reading ahead takes, whatever the file's length.
constexpr std::size_t kRunsAhead = 32;

// Records [begin, end) of a batch and what became of them. A cache line or
// more each: two threads write two runs at once.
struct alignas(64) Run {
  std::shared_ptr<const RecordBatch> batch;
  std::size_t begin = 0, end = 0;
  std::size_t before = 0;                 // models before the run
  std::optional<CandidateReader> rows;          // a fork; none: read on this thread in its turn
  std::unique_ptr<ExtraColumnReader> observer;  // a fork of the observer, where there is one
  ModelsOfRun read;
  bool done = false;
};

// The runs between the two threads: handed out in file order, read by
// either, taken by the calling thread in file order.
class SharedRuns {
 public:
  explicit SharedRuns(const TableLoader& loader) : loader_(loader) {}

  // The second thread: reads runs as they come until stopped.
  void ReadWhileNeeded() {
    std::unique_lock lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return stopped_ || CanClaim(); });
      if (stopped_) return;
      ReadNext(lock);
      changed_.notify_all();
    }
  }

  void Stop() {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
  }

  // What the calling thread does when the run due is not read yet and none
  // is left for it to read: go back to read more of the file, or wait for
  // the other thread (there is no more file, or enough runs are waiting).
  enum class Otherwise { ReadMore, Wait };

  // The calling thread's turn: the next run in file order once read, else
  // nothing after reading one itself.
  std::optional<Run> NextInOrder(Otherwise otherwise) {
    std::unique_lock lock(mutex_);
    for (;;) {
      if (!runs_.empty() && runs_.front().done) {
        Run run = std::move(runs_.front());
        runs_.pop_front();
        ++taken_;
        changed_.notify_all();
        return run;
      }
      if (CanClaim()) {
        ReadNext(lock);
        continue;
      }
      if (otherwise == Otherwise::ReadMore || runs_.empty()) return std::nullopt;
      changed_.wait(lock);
    }
  }

  std::size_t Waiting() {
    std::lock_guard lock(mutex_);
    return runs_.size();
  }

  void Add(std::vector<Run> runs) {
    std::lock_guard lock(mutex_);
    for (Run& run : runs) runs_.push_back(std::move(run));
    changed_.notify_all();
  }

 private:
  bool CanClaim() const { return claimed_ < taken_ + runs_.size(); }

  // With the lock held: reads the next unclaimed run, without the lock
  // while reading. A run without forks is left to its turn. Whatever stops
  // the reading, memory running out included, is the run's fault, told in
  // its turn: the run is done either way, so no thread waits for it.
  void ReadNext(std::unique_lock<std::mutex>& lock) {
    Run& run = runs_[claimed_++ - taken_];  // a deque's elements stay put as others come and go
    if (run.rows) {
      lock.unlock();
      try {
        run.read = loader_.Read(*run.rows, run.observer.get(), *run.batch, run.begin, run.end, run.before);
      } catch (...) {
        run.read = ModelsOfRun();
        run.read.fault = std::current_exception();
      }
      lock.lock();
    }
    run.done = true;
  }

  const TableLoader& loader_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Run> runs_;
  std::size_t taken_ = 0;    // runs taken off the front
  std::size_t claimed_ = 0;  // runs handed to a thread, counted from the first
  bool stopped_ = false;
};

}  // namespace

void TableLoader::Add(std::span<const std::string_view> fields, std::int64_t line) {
  one_.models.clear();
  one_.estimates.clear();
  one_.setValues.clear();
  Read(rows_, options_.observer, fields, line, table_.models.size(), one_);
  Append(one_);
}

void TableLoader::AddShared(DelimitedReader& reader) {
  SharedRuns shared(*this);
  // The second thread catches all it may meet (ReadNext), so waiting for it
  // is all that is left to do; where none starts, this one reads every run.
  std::future<void> helper = StartBeside([&shared] { shared.ReadWhileNeeded(); });
  // However this thread leaves, the other stops first: it reads the runs.
  struct Stopper {
    SharedRuns& shared;
    std::future<void>& helper;
    ~Stopper() {
      shared.Stop();
      if (helper.valid()) helper.wait();
    }
  } stopper{shared, helper};

  std::size_t queued = table_.models.size();  // models once every run handed out is taken
  bool more = true;                           // batches left to read
  for (;;) {
    std::optional<Run> run = shared.NextInOrder(!more || shared.Waiting() >= kRunsAhead ? SharedRuns::Otherwise::Wait
                                                                                        : SharedRuns::Otherwise::ReadMore);
    if (run) {
      // A fork's run is kept where nothing changed how it was to be read:
      // the decimal mark was settled when it was handed out, and neither
      // the observer nor its fork saw a column stop being a term since.
      const bool kept = run->rows && (!options_.observer || options_.observer->Join(*run->observer));
      if (kept) {
        rows_.Join(*run->rows);
        TellNotes(*run->batch, run->begin, run->end, run->read);
        Append(run->read);
      } else {
        ModelsOfRun again = Read(rows_, options_.observer, *run->batch, run->begin, run->end, table_.models.size());
        TellNotes(*run->batch, run->begin, run->end, again);
        Append(again);
      }
      continue;
    }
    if (!more) break;
    std::optional<RecordBatch> batch = reader.TakeBatch();
    if (!batch) {
      more = false;
      continue;
    }
    more = !batch->last;
    const auto records = std::make_shared<const RecordBatch>(std::move(*batch));
    // While the cells have not decided the decimal mark, any record may:
    // such runs are read on this thread in their turn.
    const bool forked = rows_.Decimal().Settled();
    std::vector<Run> runs;
    // An empty last batch is one empty run, which carries its fault.
    for (std::size_t begin = 0; begin < records->Records() || (begin == 0 && runs.empty()); begin += kRunRecords) {
      Run& run = runs.emplace_back();
      run.batch = records;
      run.begin = begin;
      run.end = std::min(records->Records(), begin + kRunRecords);
      run.before = queued;
      queued += run.end - run.begin;
      if (forked && options_.observer) run.observer = options_.observer->Fork();
      if (forked && (!options_.observer || run.observer)) run.rows.emplace(rows_.Fork());
    }
    shared.Add(std::move(runs));
  }
}

ModelsOfRun TableLoader::Read(CandidateReader& rows, ExtraColumnReader* observer, const RecordBatch& batch, std::size_t begin,
                           std::size_t end, std::size_t before) const {
  ModelsOfRun read;
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
void TableLoader::Read(CandidateReader& rows, ExtraColumnReader* observer, std::span<const std::string_view> fields,
                       std::int64_t line, std::size_t before, ModelsOfRun& read) const {
  try {
    if (before == options_.maxModels) {
      Refuse({.file = name_,
              .line = line,
              .text = "more than " + std::to_string(options_.maxModels) + " models; a table holds no more"});
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

// The notes found while reading records [begin, end) of a batch, up to the
// record whose fault ended the run: on one thread the reading stops there,
// and would not have found the notes after it. The last run of a batch
// tells those found after its last record too.
void TableLoader::TellNotes(const RecordBatch& batch, std::size_t begin, std::size_t end,
                            const ModelsOfRun& read) const {
  const bool stoppedEarly = read.models.size() < end - begin;
  const std::size_t upTo = stoppedEarly ? begin + read.models.size() + 1 : end + (end == batch.Records());
  batch.TellNotes(begin, upTo, diagnostics_);
}

// The models read, in their sets, then the fault that ended the run.
void TableLoader::Append(ModelsOfRun& read) {
  for (std::size_t i = 0; i < read.models.size(); ++i) {
    Candidate& c = read.models[i];
    if (rows_.By()) {
      std::string& value = read.setValues[i];
      if (Trimmed(value).empty() && !firstLineWithoutSet_) firstLineWithoutSet_ = c.line;
      const auto [where, isNew] = setIndex_.try_emplace(value, static_cast<std::uint32_t>(table_.sets.size()));
      if (isNew) table_.sets.push_back(std::move(value));
      c.set = where->second;
    }
    table_.models.push_back(std::move(c));
  }
  table_.estimates.insert(table_.estimates.end(), read.estimates.begin(), read.estimates.end());
  if (read.fault) std::rethrow_exception(read.fault);
}

}  // namespace drav::selection
