#include "tools/option_table.hpp"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>
#include <vector>

#include "base/errors.hpp"
#include "base/number_text.hpp"

namespace drav::cli {
namespace {

using selection::UsageError;

constexpr std::pair<std::string_view, OutputFormat> kFormats[] = {
    {"text", OutputFormat::Text},         {"csv", OutputFormat::Csv},     {"tsv", OutputFormat::Tsv},
    {"markdown", OutputFormat::Markdown}, {"latex", OutputFormat::Latex}, {"json", OutputFormat::Json},
    {"svg", OutputFormat::Svg},
};

constexpr std::pair<std::string_view, Form> kForms[] = {
    {"table", kTable}, {"average", kAverage}, {"importance", kImportance}, {"fits", kFits}};

const Option& Declared(std::string_view name, Form form);

double PositiveNumber(std::string_view option, std::string_view text) {
  const auto value = selection::ParseNumber(text, false);
  if (!value || *value <= 0) throw UsageError(std::string(option) + " wants a positive number, not '" + std::string(text) + "'");
  return *value;
}

template <class Whole>
bool WholeNumber(std::string_view text, Whole& value) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

void Criterion(SelectionOptions& o, std::string_view value, Form form) {
  o.load.criterion = selection::CriterionNamed(value);
  if (!o.load.criterion) throw UsageError(NotAChoice(Declared("--criterion", form), value));
}

void Level(SelectionOptions& o, std::string_view value, Form) {
  o.level = PositiveNumber("--level", value);
  if (o.level >= 1) throw UsageError("--level is a fraction between 0 and 1, such as 0.95");
}

void Decimal(SelectionOptions& o, std::string_view value, Form form) {
  if (value != "." && value != ",") throw UsageError(NotAChoice(Declared("--decimal", form), value));
  o.load.decimal = value[0];
}

void Encoding(SelectionOptions& o, std::string_view value, Form form) {
  const auto encoding = selection::InputEncodingNamed(value);
  if (!encoding) throw UsageError(NotAChoice(Declared("--encoding", form), value));
  o.encoding = *encoding;
}

void DeltaMax(SelectionOptions& o, std::string_view value, Form) {
  const auto number = selection::ParseNumber(value, false);
  if (!number || *number < 0) throw UsageError("--delta-max wants a number of 0 or more, not '" + std::string(value) + "'");
  o.subset.deltaMax = *number;
}

void Top(SelectionOptions& o, std::string_view value, Form) {
  std::size_t top = 0;
  if (!WholeNumber(value, top) || top == 0) {
    throw UsageError("--top wants a whole number of models, 1 or more, not '" + std::string(value) + "'");
  }
  o.subset.top = top;
}

void Format(SelectionOptions& o, std::string_view value, Form form) {
  // fits lists models; a chart ranks them.
  if (form == kFits && value == "svg") throw UsageError("--format svg draws a ranking; fits lists");
  const auto* found = std::find_if(std::begin(kFormats), std::end(kFormats), [&](const auto& f) { return f.first == value; });
  if (found == std::end(kFormats)) throw UsageError(NotAChoice(Declared("--format", form), value));
  o.format = found->second;
}

void Digits(SelectionOptions& o, std::string_view value, Form) {
  int digits = -1;
  if (!WholeNumber(value, digits) || digits < 0 || digits > 15) {
    throw UsageError("--digits wants a whole number from 0 to 15, not '" + std::string(value) + "'");
  }
  o.digits = digits;
}

// Each option once a group of forms; where two rows share a name, the forms
// they take it for do not overlap.
constexpr Option kOptions[] = {
    {"--criterion", "aic|aicc|bic|qaic|qaicc", "aic|aicc|bic|qaic|qaicc", kTermForms,
     "  --criterion aic|aicc|bic|qaic|qaicc  rank by this criterion; taken from its\n"
     "                   column when there is one, else computed from loglik, k\n"
     "                   and n. Default: the first criterion column, else AICc\n"
     "                   when n is given, else AIC.\n",
     Criterion},
    {"--chat", "C", "", kTermForms,
     "  --chat C         the overdispersion factor of a QAIC or QAICc computed from\n"
     "                   loglik: -2 loglik / C + 2K (+ 2K(K+1)/(n-K-1) for QAICc),\n"
     "                   K as FILE gives it; with --criterion qaic or qaicc only,\n"
     "                   and below 1 it is taken as 1. average multiplies every\n"
     "                   SE by sqrt(C) first: give the SEs of the ordinary fit,\n"
     "                   not of a quasi-likelihood fit, which are scaled already\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.chat = PositiveNumber("--chat", value); }},
    {"--level", "L", "", kTermForms,
     "  --level L        the confidence set's cumulative weight, and the interval's\n"
     "                   level for average (default 0.95); models tied with the\n"
     "                   set's last member are in it too\n",
     Level},
    {"--by", "COLUMN", "", kTermForms,
     "  --by COLUMN      rank and weigh each value of COLUMN as a set of its own;\n"
     "                   with --fits, source (each file a set) or program\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.byColumn = value; }},
    {"--model", "COLUMN", "", kTermForms, "  --model COLUMN   the column that names the models\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.modelColumn = value; }},
    {"--k", "COLUMN", "", kTermForms, "  --k COLUMN, --n COLUMN   the column that holds K or n, whatever it holds\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.roles.k = value; }},
    // table --fits takes --n as the number of observations, as fits does.
    {"--n", "COLUMN", "", kTermForms, "",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.roles.n = value; }},
    {"--term", "COLUMN", "", kTermForms, "  --term COLUMN    read COLUMN as a term whatever its name (repeatable)\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.roles.terms.emplace_back(value); }},
    {"--decimal", ".|,", ".|,", kTermForms, "  --decimal .|,    the decimal mark, instead of the file's cells deciding\n",
     Decimal},
    {"--encoding", "utf-8|windows-1252", "utf-8|windows-1252", kTermForms,
     "  --encoding utf-8|windows-1252   the text's encoding, instead of detecting\n", Encoding},
    {"--delta-max", "D", "", kTermForms, "  --delta-max D    keep the models within D of the best of their set\n",
     DeltaMax},
    {"--top", "N", "", kTermForms,
     "  --top N          keep the N best models of each set, and those tied with\n"
     "                   the Nth (a note says so); weights, importance and\n"
     "                   averages are computed again over what is kept\n",
     Top},
    {"--format", "F", "text|csv|tsv|markdown|latex|json|svg", kTermForms,
     "  --format F       text (default), csv, tsv, markdown, latex, json, or svg\n"
     "                   (a bar chart; table and importance)\n",
     Format},
    {"--digits", "N", "", kTermForms, "  --digits N       decimals in text, markdown and latex\n", Digits},
    {"--no-sort", "", "", kTermForms,
     "  --no-sort        list the models (or terms) in file order (ranks stay by\n"
     "                   criterion)\n",
     [](SelectionOptions& o, std::string_view, Form) { o.fileOrder = true; }},
    {"--fits", "", "", kTermForms,
     "  --fits FILE...   rank the models in programs' printed outputs instead of\n"
     "                   a table, with --model-names NFILE, --n N and --verbose\n"
     "                   as drav-report fits --help tells; importance and\n"
     "                   average take the terms from the coefficient tables\n"
     "                   printed with each fit, and average --estimate names a\n"
     "                   term (its SE is the table's)\n",
     [](SelectionOptions& o, std::string_view, Form) { o.fits = true; }},
    {"--only-rankable", "", "", kTermForms,
     "  --only-rankable  (--fits) rank the models that can be ranked, leaving\n"
     "                   out with a warning each file no reader knows and each\n"
     "                   model without a likelihood, K or the n AICc needs\n",
     [](SelectionOptions& o, std::string_view, Form) { o.onlyRankable = true; }},
    {"--term-names", "TFILE", "", kAverage | kImportance,
     "  --term-names TFILE  (--fits) average terms that programs name apart under\n"
     "                   one name: a line a name, \"_cons = (Intercept)\"; fits of\n"
     "                   two programs need it\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.termNames = value; }},
    {"--model-names", "NFILE", "", kTermForms, "",
     [](SelectionOptions& o, std::string_view value, Form) { o.modelNames = value; }},
    {"--verbose", "", "", kTermForms, "", [](SelectionOptions& o, std::string_view, Form) { o.verbose = true; }},
    {"--strict", "", "", kTermForms,
     "  --strict         treat warnings (models fitted to different n, a name\n"
     "                   given twice, a criterion that disagrees with logLik and\n"
     "                   K, a row without its --by value, a set without the\n"
     "                   estimate, terms in unequal numbers of models, a model\n"
     "                   without rows in CFILE, average --all without SEs) as\n"
     "                   errors\n",
     [](SelectionOptions& o, std::string_view, Form) { o.strict = true; }},
    {"--estimate", "COLUMN", "", kAverage,
     "  --estimate COLUMN, --se COLUMN   (average) the parameter and its SE;\n"
     "                   models whose estimate is empty or NA are left out\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.estimateColumn = value; }},
    {"--se", "COLUMN", "", kAverage, "",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.seColumn = value; }},
    {"--all", "", "", kAverage, "  --all            (average) every term, from the wide columns or CFILE\n",
     [](SelectionOptions& o, std::string_view, Form) { o.allTerms = true; }},
    {"--coefficients", "CFILE", "", kAverage | kImportance,
     "  --coefficients CFILE   (importance, average --all) the terms in long form\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.coefficients = value; }},

    {"--model-names", "NFILE", "", kFits,
     "  --model-names NFILE  name the models from NFILE, one name a line, in the\n"
     "                 order fits lists them\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.modelNames = value; }},
    {"--n", "N", "", kFits, "  --n N          the n of models whose output prints none (logLik(), anova())\n",
     [](SelectionOptions& o, std::string_view value, Form) { o.load.roles.n = value; }},
    {"--verbose", "", "", kFits, "  --verbose      how K, n and logLik were found\n",
     [](SelectionOptions& o, std::string_view, Form) { o.verbose = true; }},
    {"--strict", "", "", kFits, "  --strict       warnings are errors\n",
     [](SelectionOptions& o, std::string_view, Form) { o.strict = true; }},
    {"--format", "F", "text|csv|tsv|markdown|latex|json", kFits,
     "  --format F     text (default), csv, tsv, markdown, latex or json\n", Format},
    {"--digits", "N", "", kFits, "  --digits N     decimals in text, markdown and latex\n", Digits},
};

const Option* Find(std::string_view name, Form form) {
  for (const Option& option : kOptions) {
    if (option.name == name && (option.forms & form) != 0) return &option;
  }
  return nullptr;
}

const Option& Declared(std::string_view name, Form form) { return *Find(name, form); }

std::string_view FormName(Form form) {
  for (const auto& [name, f] : kForms) {
    if (f == form) return name;
  }
  return "";
}

}  // namespace

Form FormNamed(std::string_view subcommand) {
  for (const auto& [name, form] : kForms) {
    if (name == subcommand) return form;
  }
  return kTable;
}

std::span<const Option> Options() { return kOptions; }

std::string OptionsHelp(unsigned forms) {
  std::string text;
  for (const Option& option : kOptions) {
    if ((option.forms & forms) != 0) text += option.help;
  }
  return text;
}

std::string NotAChoice(const Option& option, std::string_view value) {
  std::vector<std::string_view> choices;
  for (std::string_view rest = option.choices; !rest.empty();) {
    const std::size_t bar = rest.find('|');
    choices.push_back(rest.substr(0, bar));
    rest = bar == std::string_view::npos ? std::string_view() : rest.substr(bar + 1);
  }
  std::string text = std::string(option.name) + " is ";
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (i > 0) text += i + 1 == choices.size() ? " or " : ", ";
    text += choices[i];
  }
  // "--decimal is . or , not 'x'": a comma after the comma would be read as one more choice.
  if (text.back() != ',') text += ',';
  return text + " not '" + std::string(value) + "'";
}

SelectionOptions ParseCommandLine(Form form, int argc, char** argv) {
  SelectionOptions options;
  options.average = form == kAverage;
  options.importance = form == kImportance;
  bool optionsEnded = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (optionsEnded || arg == "-" || !arg.starts_with("--")) {
      options.fitFiles.emplace_back(arg);
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
    const std::size_t equals = arg.find('=');
    const std::string_view name = arg.substr(0, equals);
    const Option* option = Find(name, form);
    if (!option) throw UsageError("unknown option " + std::string(name) + " for " + std::string(FormName(form)));
    std::string_view value;
    if (option->value.empty()) {
      if (equals != std::string_view::npos) throw UsageError(std::string(name) + " takes no value");
    } else {
      if (equals != std::string_view::npos) {
        value = arg.substr(equals + 1);
      } else if (i + 1 < argc) {
        value = argv[++i];
      }
      if (value.empty()) throw UsageError(std::string(name) + " needs a value");
    }
    option->take(options, value, form);
  }
  if (options.fitFiles.empty()) throw UsageError("no FILE given (- reads standard input)");
  return options;
}

std::string BashCompletion() {
  std::string script =
      "# bash completion for drav-report, written by drav-report from its table of options\n"
      "_drav_report() {\n"
      "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} form=${COMP_WORDS[1]}\n"
      "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
      "    COMPREPLY=($(compgen -W 'table average importance fits --help --version' -- \"$current\"))\n"
      "    [ ${#COMPREPLY[@]} -gt 0 ] || COMPREPLY=($(compgen -f -- \"$current\"))\n"
      "    return\n"
      "  fi\n"
      "  case \"$form $previous\" in\n";
  // The choices of a value, then the options that take a file or a column.
  for (const Option& option : kOptions) {
    if (option.choices.empty()) continue;
    std::string words(option.choices);
    std::replace(words.begin(), words.end(), '|', ' ');
    for (const auto& [formName, form] : kForms) {
      if ((option.forms & form) == 0) continue;
      script += "    \"" + std::string(formName) + " " + std::string(option.name) + "\") COMPREPLY=($(compgen -W '" +
                words + "' -- \"$current\")); return ;;\n";
    }
  }
  script += "  esac\n  case \"$form\" in\n";
  for (const auto& [formName, form] : kForms) {
    std::string names = "--help";
    std::string valued;
    for (const Option& option : kOptions) {
      if ((option.forms & form) == 0) continue;
      names += ' ';
      names += option.name;
      if (!option.value.empty() && option.choices.empty()) valued += '|' + std::string(option.name);
    }
    script += "    " + std::string(formName) + ")\n";
    if (!valued.empty()) {
      script += "      case \"$previous\" in " + valued.substr(1) +
                ") COMPREPLY=($(compgen -f -- \"$current\")); return ;; esac\n";
    }
    script += "      if [[ $current == -* ]]; then COMPREPLY=($(compgen -W '" + names +
              "' -- \"$current\")); else COMPREPLY=($(compgen -f -- \"$current\")); fi ;;\n";
  }
  script +=
      "    *) COMPREPLY=($(compgen -f -- \"$current\")) ;;\n"
      "  esac\n"
      "}\n"
      "complete -o filenames -F _drav_report drav-report\n";
  return script;
}

}  // namespace drav::cli
