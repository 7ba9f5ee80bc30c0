#pragma once
// The listing of `drav-report fits`: one row per model found in the
// outputs, with what each program printed of it and how Drav reads it.
#include <vector>

#include "selection/fits/fit_record.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection::fits {

// model, source, line, program, loglik, k, n, aic, bic (as printed), kind,
// warnings; with `derivations`, how K, n and logLik were found. The
// records must outlive the layout.
OutputTable FitsLayout(const std::vector<FitRecord>& records, bool derivations);

}  // namespace drav::selection::fits
