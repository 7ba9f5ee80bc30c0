#include "selection/fits/stata_fitstat.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

namespace drav::selection::fits {
namespace {

// What one column of a table gives, before K and n are worked out.
struct Column {
  std::optional<Printed> logLik;
  std::optional<Printed> aic;       // Stata's, -2 logLik + 2 df
  std::optional<Printed> aicTimesN; // SPost 9's own "AIC*n": -2 logLik + 2 x its count of coefficients
  std::optional<Printed> bic;
  std::optional<double> bicDf;      // SPost 13's "BIC(df=K)": Stata's df
  std::optional<double> devianceDf; // n less the count of parameters fitstat took
  std::optional<double> n;
  std::string command;
};

std::string WithoutBlanks(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c != ' ') out += c;
  }
  return out;
}

// "D(df=746/744/2)", "BIC(df=9)", "D(745)": the numbers inside, one a column.
std::vector<double> DfList(std::string_view label) {
  const std::size_t open = label.find('(');
  const std::size_t close = label.find(')', open);
  if (open == std::string_view::npos || close == std::string_view::npos) return {};
  std::string_view inside = label.substr(open + 1, close - open - 1);
  if (inside.starts_with("df=")) inside.remove_prefix(3);
  std::vector<double> dfs;
  while (!inside.empty()) {
    const std::size_t slash = inside.find('/');
    const auto df = ReadPrinted(inside.substr(0, slash));
    if (!df) return {};
    dfs.push_back(df->value);
    inside = slash == std::string_view::npos ? std::string_view() : inside.substr(slash + 1);
  }
  return dfs;
}

// "905.266(745)": the value, and the df after it where there is one.
std::optional<Printed> ValueOf(std::string_view word, std::optional<double>* df = nullptr) {
  const std::size_t open = word.find('(');
  if (open != std::string_view::npos && df) {
    if (const auto inside = ReadPrinted(word.substr(open + 1, word.size() - open - 2))) *df = inside->value;
  }
  return ReadGrouped(word.substr(0, open), ',');
}

// One measure of a column, by its label without blanks. SPost 9's "AIC" is
// the AIC divided by n (SPost 13's "AIC divided by N"); its own AIC is
// "AIC*n", Stata's "AIC used by Stata".
void Take(Column& column, const std::string& label, std::string_view word, const std::string& equation, bool spost9) {
  std::optional<double> df;
  const auto value = ValueOf(word, &df);
  if (!value) return;
  if ((equation == "Log-likelihood" && label == "Model") || label == "Log-LikFullModel") {
    column.logLik = value;
  } else if ((label == "AIC" && !spost9) || label == "AICusedbyStata") {
    column.aic = value;
  } else if (label == "AIC*n") {
    column.aicTimesN = value;
  } else if (label.starts_with("BIC(df=") || label == "BICusedbyStata") {
    column.bic = value;
  } else if (label == "D" && df) {
    column.devianceDf = df;  // SPost 9 with using(): "905.266(745)"
  } else if (label == "N" || label == "N:") {
    column.n = value->value;
  }
}

// The dfs in a label, one a column ("D(df=746/744/2)"), to the columns.
void TakeDfs(std::vector<Column>& columns, const std::string& label) {
  const bool deviance = label.starts_with("D(") || label.starts_with("Deviance(");
  const bool bic = label.starts_with("BIC(df=");
  if (!deviance && !bic) return;
  const auto dfs = DfList(label);
  for (std::size_t c = 0; c < columns.size() && c < dfs.size(); ++c) {
    (deviance ? columns[c].devianceDf : columns[c].bicDf) = dfs[c];
  }
}

bool IsRule(std::string_view line) {
  line = Trimmed(line);
  return !line.empty() && line.find_first_not_of("-+") == std::string_view::npos;
}

// SPost 13: "   |   Current   Saved   Difference" or "   |   logit", a
// rule, then its first equation's name over a row of its measures.
std::vector<std::string> Spost13Columns(const std::vector<StataLogLine>& lines, std::size_t at) {
  const std::string_view head = lines[at].text;
  const std::size_t bar = head.find('|');
  if (bar == std::string_view::npos || !Trimmed(head.substr(0, bar)).empty() || at + 2 >= lines.size()) return {};
  if (!IsRule(lines[at + 1].text)) return {};
  const std::string_view first = lines[at + 2].text;
  const std::size_t firstBar = first.find('|');
  if (firstBar == std::string_view::npos) return {};
  const std::string_view equation = Trimmed(first.substr(0, firstBar));
  if (equation != "Log-likelihood" && equation != "AIC" && equation != "IC") return {};
  std::vector<std::string> columns;
  for (const std::string_view word : Words(head.substr(bar + 1))) columns.emplace_back(word);
  const bool compared = columns == std::vector<std::string>{"Current", "Saved", "Difference"};
  return columns.size() == 1 || compared ? columns : std::vector<std::string>{};
}

std::vector<Column> ReadSpost13(const std::vector<StataLogLine>& lines, std::size_t& at) {
  const auto headings = Spost13Columns(lines, at);
  std::vector<Column> columns(std::min<std::size_t>(headings.size(), 2));
  if (headings.size() == 1) columns[0].command = headings[0];
  std::string equation;
  std::size_t i = at + 2;
  for (; i < lines.size(); ++i) {
    const std::string_view line = lines[i].text;
    if (IsRule(line)) continue;
    const std::size_t bar = line.find('|');
    if (bar == std::string_view::npos) break;
    const std::string label = WithoutBlanks(Trimmed(line.substr(0, bar)));
    const auto values = Words(line.substr(bar + 1));
    if (values.empty()) {
      equation = label;
      continue;
    }
    if (label == "AdjustedR2") {
      for (Column& column : columns) column.command = "regress";  // only regress has an adjusted R2
    }
    TakeDfs(columns, label);
    for (std::size_t c = 0; c < columns.size() && c < values.size(); ++c) Take(columns[c], label, values[c], equation, false);
  }
  at = i - 1;
  return columns;
}

// SPost 9, measures two to a line: "Log-Lik Intercept Only:  -514.873
// Log-Lik Full Model:  -452.633", "D(745):  905.266   LR(7):  124.480".
void TakePairs(Column& column, std::string_view line) {
  std::string label;
  const auto words = Words(line);
  for (std::size_t w = 0; w < words.size(); ++w) {
    if (!words[w].ends_with(':')) {
      label.append(words[w]);
      continue;
    }
    label.append(words[w].substr(0, words[w].size() - 1));
    if (label.starts_with("D(")) {
      if (const auto dfs = DfList(label); dfs.size() == 1) column.devianceDf = dfs[0];
    }
    if (w + 1 < words.size()) Take(column, label, words[++w], {}, true);
    label.clear();
  }
}

// SPost 9 with using(): "Log-Lik Full Model   -452.633   -461.653   9.020".
void TakeRow(std::vector<Column>& columns, std::string_view line) {
  const auto words = Words(line);
  std::size_t first = 0;
  std::string label;
  while (first < words.size() && !ValueOf(words[first])) label.append(words[first++]);
  if (label == "Model:") {
    for (std::size_t c = 0; c < columns.size() && 1 + c < words.size(); ++c) columns[c].command = words[1 + c];
    return;
  }
  for (std::size_t c = 0; c < columns.size() && first + c < words.size(); ++c) {
    Take(columns[c], label, words[first + c], {}, true);
  }
}

std::vector<Column> ReadSpost9(const std::vector<StataLogLine>& lines, std::size_t& at) {
  const auto heading = Words(lines[at].text);  // Measures of Fit for logit of am
  std::string command = heading.size() > 4 ? std::string(heading[4]) : std::string();
  std::size_t i = at + 1;
  while (i < lines.size() && Trimmed(lines[i].text).empty()) ++i;
  const bool compared = i < lines.size() && Words(lines[i].text) ==
                                               std::vector<std::string_view>{"Current", "Saved", "Difference"};
  std::vector<Column> columns(compared ? 2 : 1);
  for (Column& column : columns) column.command = command;
  for (i += compared ? 1 : 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i].text;
    if (Trimmed(line).empty() || line.starts_with(". ")) break;
    if (compared) {
      TakeRow(columns, line);
    } else {
      TakePairs(columns[0], line);
    }
  }
  at = i - 1;
  return columns;
}

// K, n and the log-likelihood of a column, as Stata counts K: where the
// table gives Stata's own df (SPost 13's BIC, SPost 9's "AIC used by
// Stata"), else SPost 9's count of coefficients, which takes a factor's
// base level for one.
std::optional<FitstatModel> Model(const Column& column, std::int64_t line, bool saved) {
  FitstatModel m;
  m.line = line;
  m.saved = saved;
  m.regress = column.command == "regress" || column.command == "reg";
  if (column.aic) m.aic = column.aic->value;
  if (column.bic) m.bic = column.bic->value;
  std::optional<double> count;  // the parameters fitstat took n less
  if (column.logLik && column.aicTimesN) {
    count = WholeNumber(column.aicTimesN->value / 2 + column.logLik->value,
                        column.aicTimesN->halfUnit / 2 + column.logLik->halfUnit + 1e-9);
  }
  if (column.bicDf) {
    m.k = *column.bicDf;
    count = column.bicDf;
    m.derivation = "K = df of fitstat's BIC, as estat ic counts";
  }
  if (column.logLik) {
    m.logLik = *column.logLik;
  } else if (column.aic && column.bicDf) {
    m.logLik = {m.k - column.aic->value / 2, column.aic->halfUnit / 2};
    AddStep(m.derivation, "logLik = K - AIC/2");
  } else {
    return std::nullopt;
  }
  if (std::isnan(m.k) && column.aic) {
    if (const auto k = WholeNumber(column.aic->value / 2 + m.logLik.value,
                                   column.aic->halfUnit / 2 + m.logLik.halfUnit + 1e-9)) {
      m.k = *k;
      m.derivation = "K = AIC used by Stata/2 + logLik";
    }
  }
  if (std::isnan(m.k) && count) {
    m.k = *count;
    m.derivation = "K = (AIC*n)/2 + logLik, fitstat's count of coefficients";
  }
  if (std::isnan(m.k)) return std::nullopt;
  if (column.n) {
    m.n = *column.n;
    AddStep(m.derivation, "n = N");
  } else if (column.devianceDf && count) {
    m.n = *column.devianceDf + *count;
    AddStep(m.derivation, "n = the deviance's df " + Shown(*column.devianceDf) + " + " + Shown(*count));
  }
  return m;
}

}  // namespace

bool StartsFitstat(const std::vector<StataLogLine>& lines, std::size_t at) {
  return Trimmed(lines[at].text).starts_with("Measures of Fit for ") || !Spost13Columns(lines, at).empty();
}

std::vector<FitstatModel> ReadFitstat(const std::vector<StataLogLine>& lines, std::size_t& at) {
  const std::int64_t line = lines[at].number;
  const std::vector<Column> columns =
      Trimmed(lines[at].text).starts_with("Measures of Fit for ") ? ReadSpost9(lines, at) : ReadSpost13(lines, at);
  std::vector<FitstatModel> models;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (auto model = Model(columns[c], line, c == 1)) models.push_back(std::move(*model));
  }
  return models;
}

}  // namespace drav::selection::fits
