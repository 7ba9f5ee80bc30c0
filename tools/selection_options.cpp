#include "tools/selection_options.hpp"

#include <charconv>
#include <cmath>
#include <iterator>
#include <utility>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "tools/exit_status.hpp"
#include "tools/option_table.hpp"

namespace drav::cli {

using selection::UsageError;

SelectionOptions ParseSelectionOptions(int argc, char** argv) {
  SelectionOptions options = ParseCommandLine(FormNamed(argv[0]), argc, argv);
  if (options.help) return options;
  if (!options.fits) {
    if (options.fitFiles.size() > 1) throw UsageError("one FILE only; '" + options.fitFiles[1] + "' is a second");
    if (!options.modelNames.empty() || options.verbose || options.onlyRankable || !options.termNames.empty()) {
      throw UsageError("--model-names, --verbose, --only-rankable and --term-names go with --fits");
    }
    options.file = options.fitFiles.front();
    options.fitFiles.clear();
  }
  const bool oneEstimate = !options.load.estimateColumn.empty() || !options.load.seColumn.empty();
  if (options.allTerms && oneEstimate) throw UsageError("average takes --all or --estimate and --se, not both");
  if (options.fits) {
    // A printed table gives each term its SE beside it.
    if (!options.load.seColumn.empty()) throw UsageError("with --fits, --estimate names a term and its SE is the table's; leave out --se");
    if (!options.coefficients.empty()) throw UsageError("with --fits, the terms are the printed coefficient tables; leave out --coefficients");
    if (options.average && !options.allTerms && options.load.estimateColumn.empty()) {
      throw UsageError("average --fits needs --estimate TERM, or --all");
    }
  } else if (options.average && !options.allTerms &&
             (options.load.estimateColumn.empty() || options.load.seColumn.empty())) {
    throw UsageError("average needs --estimate COLUMN and --se COLUMN, or --all");
  }
  if (options.average && !options.allTerms && !options.coefficients.empty()) {
    throw UsageError("--coefficients FILE goes with importance and average --all");
  }
  if (options.file == "-" && options.coefficients == "-") {
    throw UsageError("FILE and --coefficients cannot both be standard input");
  }
  if (options.format == OutputFormat::Svg && options.average) {
    throw UsageError("--format svg draws the table and importance; average has no chart");
  }
  return options;
}

std::string_view SelectionSummary() {
  return R"(
Model-selection tables from any delimited text with a header row:
  drav-report table [OPTIONS] FILE|-
  drav-report average [OPTIONS] --estimate COLUMN --se COLUMN FILE|-
  drav-report average [OPTIONS] --all [--coefficients FILE] FILE|-
  drav-report importance [OPTIONS] [--coefficients FILE] FILE|-
See drav-report table --help.

The models in statistics programs' printed outputs (R, lavaan, Mplus,
statsmodels, MARK, Stata, SAS, SPSS), listed or ranked:
  drav-report fits [OPTIONS] FILE...
  drav-report table --fits [OPTIONS] FILE...
  drav-report importance --fits [OPTIONS] FILE...
  drav-report average --fits (--all | --estimate TERM) [OPTIONS] FILE...
See drav-report fits --help.
)";
}

std::string SelectionHelp() {
  return R"(Usage: drav-report table [OPTIONS] FILE|-
       drav-report average [OPTIONS] --estimate COLUMN --se COLUMN FILE|-
       drav-report average [OPTIONS] --all [--coefficients CFILE] FILE|-
       drav-report importance [OPTIONS] [--coefficients CFILE] FILE|-

table ranks the models of FILE by an information criterion and prints each
model's rank, K, log-likelihood, criterion, difference from the best (delta),
relative likelihood, Akaike weight, cumulative weight, evidence ratio and
whether it belongs to the confidence set (an evidence ratio above 99999 is
>99999 in text, markdown and latex). average prints the model-averaged
estimate of one parameter with its unconditional standard error (revised
form) and confidence interval, over the models that have the parameter.

importance prints, for each term, the sum of the weights of the models that
hold it and how many models hold it, by importance. average --all prints
every term's importance, its conditional average (over the models that hold
it, weights renormalised) with the revised unconditional SE and interval, and
its full average (a model without the term counts as 0 with SE 0) with SE.

FILE is comma-, tab- or semicolon-separated text with a header row, as
write.csv, spreadsheets and Stata write it, or blank-separated as
write.table writes by default; - reads standard input. Columns are found
by name, without case: model (modnames, name, formula, call), aic, aicc,
bic, qaic, qaicc, loglik (logl, ll), k (npar, df), n (nobs); of two
spellings in one file the first listed is read (K before df). Text is
UTF-8, UTF-16 with a byte-order mark, or Windows-1252 (taken when the
first byte outside ASCII is not UTF-8). The decimal mark is a full stop
with commas between fields; otherwise the first number that has a mark
decides. K is taken as given: it counts every estimated parameter (Drav
never adds one for C), and a criterion column that disagrees with logLik
and K is warned of. A column named K or N is K or n only where its first
cell is a whole number (n no smaller than K) and no TERM_se column belongs
to it; otherwise it is a term, the role goes to df or nobs, and a note says
so (--k, --n and --term decide). AICc and QAICc, given or computed, need
n > K + 1. Quotes inside quoted fields may be doubled or, as write.table
writes them, escaped by a backslash.

Terms come in one of two forms. Wide, as all-subsets tables are exported:
every other column of FILE whose cells are numbers, NA, empty or + (a factor
the model holds) is a term, and one NA in every model is left out. Columns
of statistics are never terms: delta, weight, rank, likelihood, modellik,
cum.wt and any *AIC*wt or *AIC*weight; dAIC, dAICc, dBIC, dQAIC, dQAICc,
dLogLik and delta*; r.squared, adj.r.squared, sigma, statistic, p.value,
deviance, df.residual, null.deviance, df.null; estimate, conf.low,
conf.high, effect, group; t value, z value, Pr(>|t|), Pr(>|z|) (and as
data.frame() renames them), Pr(>Chisq), Pr(>F), F value, Sum Sq, Mean Sq,
Chisq. A column named TERM_se (TERM.se, se_TERM, se.TERM, std.error.TERM
and the other SE spellings below) holds TERM's standard errors, and is
refused where no column TERM stands beside it; estimate.TERM (estimate_TERM,
coef.TERM) is the term TERM, and statistic.TERM, p.value.TERM, conf.low.TERM
are not terms: reshape() and pivot_wider() of tidy() read as the long form.
Long, as tidy coefficient tables are written: --coefficients CFILE with
columns model, term (parameter), estimate (Estimate, coefficient, coef) and
its standard error (std.error, se, Std. Error, Std..Error, std_error,
std.err, stderr, standard error, s.e.), one row per model and term, as
tidy() or coef(summary()) bound with model and term columns write it,
joined to FILE by model name (and by the --by column when CFILE has it). A
model of FILE without any row in CFILE is warned of. Any quantity averages
this way, predictions too: one term per predicted point.

Options:
)" + OptionsHelp(kTermForms) + R"(
Messages go to standard error: warnings, and notes of what was decided
where the file left it open; a refusal names file:line and the column.

)" + ExitStatusHelp();
}

}  // namespace drav::cli
