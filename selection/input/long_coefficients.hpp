#pragma once
// Terms as a tidy coefficient table lays them out, one row per model and
// term (broom's tidy() bound over the models, or coef(summary()) with a
// model and a term column): columns model, term, estimate and its standard
// error, by the spellings of known_columns.hpp (Estimate, Std. Error). Any
// quantity of the models averages this way, predictions too: one term per
// predicted point.
#include "base/diagnostics.hpp"
#include "selection/input/delimited_reader.hpp"
#include "selection/input/load_candidates.hpp"
#include "selection/table/coefficients.hpp"

namespace drav::selection {

// Joins the rows to the models of `table` by name; with several sets, by
// the --by column and the name when the file has that column. A model of
// the table without rows holds no term, and is warned of: every fit has
// an intercept or some other row, so a file cut short would hide. Throws DataError, naming file:line
// and the column, for a row whose model is not in the table or is named by
// more than one model of it, a term given twice for one model, an estimate
// or SE that is not a number, and a missing column. `decimal` is the
// decimal mark the user chose, 0 to let the file's cells decide. With
// `readAhead`, the file is read on a second thread while its rows are
// joined (DelimitedReader::ReadAhead: a file that ends, not a pipe).
Coefficients ReadLongCoefficients(DelimitedReader& reader, const CandidateTable& table, char decimal,
                                  Diagnostics& diagnostics, bool readAhead = false);

}  // namespace drav::selection
