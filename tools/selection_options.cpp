#include "tools/selection_options.hpp"

#include <charconv>
#include <iterator>
#include <cmath>
#include <utility>

#include "selection/errors.hpp"
#include "selection/number_text.hpp"
#include "tools/exit_status.hpp"

namespace drav::cli {
namespace {

using selection::UsageError;

constexpr std::pair<std::string_view, OutputFormat> kFormats[] = {
    {"text", OutputFormat::Text},         {"csv", OutputFormat::Csv},     {"tsv", OutputFormat::Tsv},
    {"markdown", OutputFormat::Markdown}, {"latex", OutputFormat::Latex}, {"json", OutputFormat::Json},
    {"svg", OutputFormat::Svg},
};
static_assert(kFormats[std::size(kFormats) - 1].second == OutputFormat::Svg, "FormatNamed leaves the chart out last");

double PositiveNumber(std::string_view option, std::string_view text) {
  const auto value = selection::ParseNumber(text, false);
  if (!value || *value <= 0) throw UsageError(std::string(option) + " wants a positive number, not '" + std::string(text) + "'");
  return *value;
}

}  // namespace

std::pair<std::string_view, std::string_view> OptionWithValue(int argc, char** argv, int& i) {
  const std::string_view arg = argv[i];
  if (const auto equals = arg.find('='); equals != std::string_view::npos) {
    return {arg.substr(0, equals), arg.substr(equals + 1)};
  }
  if (i + 1 < argc) return {arg, argv[++i]};
  throw UsageError(std::string(arg) + " needs a value");
}

OutputFormat FormatNamed(std::string_view value, bool chart) {
  std::string names;
  const std::size_t count = std::size(kFormats) - (chart ? 0 : 1);  // svg, the chart, is last
  for (std::size_t i = 0; i < count; ++i) {
    if (kFormats[i].first == value) return kFormats[i].second;
    names.append(i == 0 ? "" : i + 1 == count ? " or " : ", ").append(kFormats[i].first);
  }
  throw UsageError("--format is " + names + ", not '" + std::string(value) + "'");
}

SelectionOptions ParseSelectionOptions(int argc, char** argv) {
  SelectionOptions options;
  options.average = std::string_view(argv[0]) == "average";
  options.importance = std::string_view(argv[0]) == "importance";
  bool optionsEnded = false;
  bool haveFile = false;
  for (int i = 1; i < argc; ++i) {
    std::string_view arg = argv[i];
    if (optionsEnded || arg == "-" || !arg.starts_with("--")) {
      options.fitFiles.emplace_back(arg);
      haveFile = true;
      continue;
    }
    if (arg == "--fits" && !options.average && !options.importance) {
      options.fits = true;
      continue;
    }
    if (arg == "--verbose") {
      options.verbose = true;
      continue;
    }
    if (arg == "--") {
      optionsEnded = true;
      continue;
    }
    if (arg == "--help") {
      options.help = true;
      return options;
    }
    if (arg == "--no-sort") {
      options.fileOrder = true;
      continue;
    }
    if (arg == "--strict") {
      options.strict = true;
      continue;
    }
    if (arg == "--all" && options.average) {
      options.allTerms = true;
      continue;
    }
    // Every other option takes a value.
    const auto option = OptionWithValue(argc, argv, i);
    const std::string_view name = option.first;
    const std::string_view value = option.second;
    if (value.empty()) throw UsageError(std::string(name) + " needs a value");
    if (name == "--criterion") {
      options.load.criterion = selection::CriterionNamed(value);
      if (!options.load.criterion) {
        throw UsageError("--criterion is aic, aicc, bic, qaic or qaicc, not '" + std::string(value) + "'");
      }
    } else if (name == "--chat") {
      options.load.chat = PositiveNumber(name, value);
    } else if (name == "--level") {
      options.level = PositiveNumber(name, value);
      if (options.level >= 1) throw UsageError("--level is a fraction between 0 and 1, such as 0.95");
    } else if (name == "--by") {
      options.load.byColumn = value;
    } else if (name == "--model") {
      options.load.modelColumn = value;
    } else if (name == "--k") {
      options.load.roles.k = value;
    } else if (name == "--n") {
      options.load.roles.n = value;
    } else if (name == "--term") {
      options.load.roles.terms.emplace_back(value);
    } else if (name == "--decimal") {
      if (value != "." && value != ",") throw UsageError("--decimal is . or , not '" + std::string(value) + "'");
      options.load.decimal = value[0];
    } else if (name == "--encoding") {
      const auto encoding = selection::InputEncodingNamed(value);
      if (!encoding) throw UsageError("--encoding is utf-8 or windows-1252, not '" + std::string(value) + "'");
      options.encoding = *encoding;
    } else if (name == "--estimate" && options.average) {
      options.load.estimateColumn = value;
    } else if (name == "--se" && options.average) {
      options.load.seColumn = value;
    } else if (name == "--coefficients" && (options.average || options.importance)) {
      options.coefficients = value;
    } else if (name == "--delta-max") {
      const auto number = selection::ParseNumber(value, false);
      if (!number || *number < 0) throw UsageError("--delta-max wants a number of 0 or more, not '" + std::string(value) + "'");
      options.subset.deltaMax = *number;
    } else if (name == "--top") {
      std::size_t top = 0;
      const auto result = std::from_chars(value.data(), value.data() + value.size(), top);
      if (result.ec != std::errc() || result.ptr != value.data() + value.size() || top == 0) {
        throw UsageError("--top wants a whole number of models, 1 or more, not '" + std::string(value) + "'");
      }
      options.subset.top = top;
    } else if (name == "--format") {
      options.format = FormatNamed(value, true);
    } else if (name == "--model-names") {
      options.modelNames = value;
    } else if (name == "--digits") {
      int digits = -1;
      const auto result = std::from_chars(value.data(), value.data() + value.size(), digits);
      if (result.ec != std::errc() || result.ptr != value.data() + value.size() || digits < 0 || digits > 15) {
        throw UsageError("--digits wants a whole number from 0 to 15, not '" + std::string(value) + "'");
      }
      options.digits = digits;
    } else {
      throw UsageError("unknown option " + std::string(name) + " for " + std::string(argv[0]));
    }
  }
  if (!haveFile) throw UsageError("no FILE given (- reads standard input)");
  if (!options.fits) {
    if (options.fitFiles.size() > 1) throw UsageError("one FILE only; '" + options.fitFiles[1] + "' is a second");
    if (!options.modelNames.empty() || options.verbose) throw UsageError("--model-names and --verbose go with --fits");
    options.file = options.fitFiles.front();
    options.fitFiles.clear();
  }
  const bool oneEstimate = !options.load.estimateColumn.empty() || !options.load.seColumn.empty();
  if (options.allTerms && oneEstimate) throw UsageError("average takes --all or --estimate and --se, not both");
  if (options.average && !options.allTerms && (options.load.estimateColumn.empty() || options.load.seColumn.empty())) {
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
  --criterion aic|aicc|bic|qaic|qaicc  rank by this criterion; taken from its
                   column when there is one, else computed from loglik, k
                   and n. Default: the first criterion column, else AICc
                   when n is given, else AIC.
  --chat C         the overdispersion factor of a QAIC or QAICc computed from
                   loglik: -2 loglik / C + 2K (+ 2K(K+1)/(n-K-1) for QAICc),
                   K as FILE gives it; with --criterion qaic or qaicc only,
                   and below 1 it is taken as 1. average multiplies every
                   SE by sqrt(C) first: give the SEs of the ordinary fit,
                   not of a quasi-likelihood fit, which are scaled already
  --level L        the confidence set's cumulative weight, and the interval's
                   level for average (default 0.95); models tied with the
                   set's last member are in it too
  --by COLUMN      rank and weigh each value of COLUMN as a set of its own
  --model COLUMN   the column that names the models
  --k COLUMN, --n COLUMN   the column that holds K or n, whatever it holds
  --term COLUMN    read COLUMN as a term whatever its name (repeatable)
  --decimal .|,    the decimal mark, instead of the file's cells deciding
  --encoding utf-8|windows-1252   the text's encoding, instead of detecting
  --delta-max D    keep the models within D of the best of their set
  --top N          keep the N best models of each set, and those tied with
                   the Nth (a note says so); weights, importance and
                   averages are computed again over what is kept
  --format F       text (default), csv, tsv, markdown, latex, json, or svg
                   (a bar chart; table and importance)
  --digits N       decimals in text, markdown and latex
  --no-sort        list the models (or terms) in file order (ranks stay by
                   criterion)
  --fits FILE...   (table) rank the models in programs' printed outputs
                   instead of a table; with --model-names NFILE, --n N and
                   --verbose as drav-report fits --help tells
  --strict         treat warnings (models fitted to different n, a name
                   given twice, a criterion that disagrees with logLik and
                   K, a row without its --by value, a set without the
                   estimate, terms in unequal numbers of models, a model
                   without rows in CFILE, average --all without SEs) as
                   errors
  --estimate COLUMN, --se COLUMN   (average) the parameter and its SE;
                   models whose estimate is empty or NA are left out
  --all            (average) every term, from the wide columns or CFILE
  --coefficients CFILE   (importance, average --all) the terms in long form

Messages go to standard error: warnings, and notes of what was decided
where the file left it open; a refusal names file:line and the column.

)" + ExitStatusHelp();
}

}  // namespace drav::cli
