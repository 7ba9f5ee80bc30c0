#pragma once
// Terms as all-subsets exports lay them out: one column per term beside the
// model's criterion, holding its estimate, NA or nothing where the model
// lacks the term, and "+" for a factor the model holds.
//
// A term column is any column without a role (name, logLik, K, n, a
// criterion, the --by column) and without a statistic's name (delta, weight,
// p.value and the rest of known_columns.hpp) whose every cell is a number,
// NA, empty or "+". A column named after a term with an SE spelling joined
// before or after it (X_se, se.X, std.error.X) holds that term's standard
// errors, and estimate.X is the term X, as reshape() and pivot_wider()
// spread tidy(). A term that no model holds (NA throughout) is left out.
#include <optional>
#include <string>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/input/extra_column_reader.hpp"
#include "selection/table/coefficients.hpp"

namespace drav::selection {

class WideCoefficients : public ExtraColumnReader {
 public:
  // `name` stands for the file in messages; `byColumn` and `modelColumn` as
  // LoadOptions has them, empty when not given.
  WideCoefficients(std::string name, std::string byColumn, std::string modelColumn = {})
      : name_(std::move(name)), byColumn_(std::move(byColumn)), modelColumn_(std::move(modelColumn)) {}

  void Start(const std::vector<std::string>& header, const ColumnRoles& roles, std::size_t expectedRows) override;
  void Row(std::span<const std::string_view> fields, std::int64_t line, DecimalMark& decimal) override;
  std::unique_ptr<ExtraColumnReader> Fork() const override;
  bool Join(ExtraColumnReader& fork) override;

  // The terms of the rows read; the columns that held text are not among
  // them, and one that held numbers before its text is warned of.
  Coefficients Finish(Diagnostics& diagnostics);

 private:
  struct Candidate {
    std::size_t column;
    std::optional<std::size_t> seColumn;
    bool isTerm = true;  // false once a cell is neither a number, NA, empty nor "+"
    std::int64_t textLine = 0;  // where it stopped being a term
    Term term;
  };
  std::string name_;
  std::string byColumn_;
  std::string modelColumn_;
  std::vector<std::string> header_;
  std::size_t rows_ = 0;
  std::vector<Candidate> columns_;
  // How many columns have stopped being terms: a fork's rows were read
  // right only if neither it nor this observer saw one stop since the fork.
  std::size_t stopped_ = 0;
  std::size_t stoppedAtFork_ = 0;
};

}  // namespace drav::selection
