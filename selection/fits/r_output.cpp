// R's printed output: summary() of glm and of lme4 fits, anova() tables of
// several fits, and logLik(), from a console transcript, knitr's rendering
// or Rscript's output; one record per model found, in file order. The
// other pieces (lm's summary, broom's glance(), survreg, coxph, ...) are
// read in files of their own, r_blocks.hpp lists them.
#include <cmath>
#include <set>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

// Other: the printed output of a fit that no piece reads (polr, lm's
// print, ...), which ends the piece before it all the same. Unread: an
// output that holds too little to rank by, said so.
enum class Piece { None, Glm, Lm, Mixed, Anova, LogLik, AicTable, Nlme, Clm, Glance, Other, Unread };

// The headings of R's outputs that hold no log-likelihood to rank by:
// anova() of glm and of lm fits, and mgcv's gam (over its "Formula:").
constexpr std::string_view kDevianceTable = "Analysis of Deviance Table";
constexpr std::string_view kVarianceTable = "Analysis of Variance Table";
constexpr std::string_view kGamLink = "Link function:";

// Why the output headed by `line` is not read, or nothing: a table of
// several fits, or a fit without a log-likelihood to rank by.
std::optional<std::string_view> WhyUnread(std::string_view line) {
  const std::string_view trimmed = Trimmed(line);
  if (trimmed.starts_with(kDevianceTable) || trimmed.starts_with(kVarianceTable)) {
    return "anova() of glm or lm fits prints deviances or sums of squares, no log-likelihood; print AIC(m1, m2, ...)";
  }
  if (trimmed.starts_with(kGamLink)) {
    return "mgcv's gam prints no log-likelihood (its ML or REML score is penalized), and its degrees of freedom "
           "are no whole K";
  }
  if (line.find("df") == std::string_view::npos) return std::nullopt;  // asked of every line: split only where it may be
  const auto words = Words(line);
  if (words.size() == 2 && words[0] == "df" && words[1] == "BIC") {
    return "BIC(m1, m2, ...) prints no log-likelihood, and without n none follows from it; print AIC(m1, m2, ...)";
  }
  if (words.size() >= 5 && words[0] == "Model" && words[1] == "df" && words[2] == "AIC" && words[3] == "BIC" &&
      words[4] == "logLik") {
    return "anova() of nlme fits does not say whether they were fitted by REML or by ML; print summary() of each";
  }
  return std::nullopt;
}

// glmmTMB heads its summary with the family, where lme4 heads it with "...
// mixed model fit by ..." (a heading that may wrap onto a second line) and
// the family below.
bool StartsGlmmTmb(const Transcript& lines, std::size_t i) {
  if (!Trimmed(lines[i].text).starts_with("Family:")) return false;
  int looked = 0;
  for (std::size_t j = i; j-- > 0 && looked < 2;) {
    if (Trimmed(lines[j].text).empty()) continue;
    if (lines[j].command) return true;
    if (lines[j].text.find("mixed model fit by") != std::string_view::npos) return false;
    ++looked;
  }
  return true;
}

// glmmTMB's print() heads its fit with the formula and the AIC table
// under it ("AIC BIC logLik df.resid", no deviance as its summary and lme4
// print); the formula may wrap, and a "Data:" line may stand between.
bool StartsGlmmTmbPrint(const Transcript& lines, std::size_t i) {
  if (!Trimmed(lines[i].text).starts_with("Formula:")) return false;
  for (std::size_t j = i + 1; j < lines.size() && j < i + 8 && !lines[j].command; ++j) {
    const auto words = Words(lines[j].text);
    if (words.empty()) return false;
    if (words.size() == 4 && words[0] == "AIC" && words[1] == "BIC" && words[2] == "logLik" && words[3] == "df.resid") {
      return true;
    }
  }
  return false;
}

Piece PieceAt(const Transcript& lines, std::size_t i) {
  if (lines[i].command) return Piece::None;
  const std::string_view line = Trimmed(lines[i].text);
  // summary() prints "Call:" alone and the call below it; print() prints
  // both on one line.
  if (line.starts_with("Call:")) {
    std::string_view call = Trimmed(line.substr(5));
    if (call.empty()) {
      std::size_t next = i + 1;
      while (next < lines.size() && Trimmed(lines[next].text).empty()) ++next;
      if (next == lines.size() || lines[next].command) return Piece::Other;
      call = Trimmed(lines[next].text);
    }
    if (call.starts_with("lm(")) return Piece::Lm;
    const bool glm = call.starts_with("glm(") || call.starts_with("glm.nb(") || call.find("::glm") != std::string_view::npos;
    return glm ? Piece::Glm : Piece::Other;
  }
  if (line.find("mixed model fit by") != std::string_view::npos || StartsGlmmTmb(lines, i) ||
      StartsGlmmTmbPrint(lines, i)) {
    return Piece::Mixed;
  }
  if (IsAicTableHeading(line)) return Piece::AicTable;
  if (WhyUnread(line)) return Piece::Unread;
  if (IsNlmeHeading(line)) return Piece::Nlme;
  if (IsClmHeading(line)) return Piece::Clm;
  if (IsGlanceHeading(lines, i)) return Piece::Glance;
  if (line == "Models:") return Piece::Anova;
  if (line.starts_with("'log Lik.'")) return Piece::LogLik;
  return Piece::None;
}

// R prints a named list a "$name" line over each element: the element's
// name, where the line just above the piece at `i` is one.
std::string ListElementName(const Transcript& lines, std::size_t i) {
  while (i-- > 0 && !lines[i].command) {
    const std::string_view line = Trimmed(lines[i].text);
    if (line.empty()) continue;
    return line.starts_with('$') && IsName(line.substr(1)) ? std::string(line.substr(1)) : std::string();
  }
  return {};
}

struct LogLikLine {
  Printed value;
  double df = 0;
};

// 'log Lik.' -182.2946 (df=6)
std::optional<LogLikLine> ReadLogLikLine(std::string_view line) {
  const auto words = Words(line.substr(line.find('\'', 1) + 1));
  if (words.size() < 2 || !words[1].starts_with("(df=") || !words[1].ends_with(")")) return std::nullopt;
  const auto value = ReadPrinted(words[0]);
  const auto df = ReadPrinted(words[1].substr(4, words[1].size() - 5));
  if (!value || !df) return std::nullopt;
  return LogLikLine{*value, df->value};
}

struct Found {
  FitRecord record;
  std::string object;  // the R object it was printed from, where the command shows it
};

// A logLik() line after a summary of the same fit gives its log-likelihood
// to more digits. It belongs to the record of the object it names, or, with
// no command to tell, to the model just before it when K and the value agree.
bool Refine(std::vector<Found>& found, const std::string& object, const LogLikLine& ll, std::int64_t line,
            ProgramOutput& output) {
  Found* target = nullptr;
  for (auto it = found.rbegin(); it != found.rend() && !target; ++it) {
    if (!object.empty() && it->object == object) target = &*it;
  }
  if (!target && object.empty() && !found.empty()) target = &found.back();
  if (!target) return false;
  FitRecord& r = target->record;
  // A fit whose print shows no log-likelihood (coxph) takes it whole.
  const bool agrees = std::isnan(r.logLik) ||
                      std::fabs(r.logLik - ll.value.value) <= r.logLikHalfUnit + ll.value.halfUnit + 1e-9;
  if (r.k == ll.df && agrees) {
    r.logLik = ll.value.value;
    r.logLikHalfUnit = ll.value.halfUnit;
    AddStep(r.derivation, "logLik from logLik() on line " + std::to_string(line));
    return true;
  }
  if (object.empty()) return false;
  output.Flag(r,
              "logLik(" + object + ") on line " + std::to_string(line) + " gives " + Shown(ll.value.value) +
                  " (df=" + Shown(ll.df) + "), but the summary gives logLik " + Shown(r.logLik) + " and K " +
                  Shown(r.k),
              r.line);
  return true;
}

std::string Collapsed(std::string_view text) {
  std::string out;
  for (std::string_view word : Words(text)) out.append(out.empty() ? "" : " ").append(word);
  return out;
}

// logLik(fit, REML = TRUE) prints a restricted likelihood, whatever the fit
// was fitted by; the line itself does not say so, only the call does.
bool AsksForReml(std::string_view command) {
  std::string plain;
  for (const char c : command) {
    if (c != ' ') plain += c;
  }
  return plain.find("REML=TRUE") != std::string::npos || plain.find("REML=T)") != std::string::npos ||
         plain.find("REML=T,") != std::string::npos;
}

// anova() prints no n; a summary of the same formula in the file does.
// Records still without a name (logLik(), glance()) share nothing.
void ShareN(std::vector<FitRecord>& records) {
  for (FitRecord& r : records) {
    if (!std::isnan(r.n) || r.model.empty()) continue;
    for (const FitRecord& other : records) {
      if (!std::isnan(other.n) && Collapsed(other.model) == Collapsed(r.model)) {
        r.n = other.n;
        AddStep(r.derivation, "n from the summary of the same formula on line " + std::to_string(other.line));
        break;
      }
    }
  }
}

// A line that heads an AIC() table ("  df      AIC", spaced to the names),
// or one of the tables of several fits that R prints and Drav refuses.
bool HoldsAicTable(std::string_view text) {
  for (std::size_t at = text.find("df"); at != std::string_view::npos; at = text.find("df", at + 2)) {
    const std::size_t start = text.rfind('\n', at) + 1;  // npos + 1 is 0
    const std::size_t stop = text.find('\n', at);
    const std::string_view line = text.substr(start, stop == std::string_view::npos ? stop : stop - start);
    if (IsAicTableHeading(line) || WhyUnread(line)) return true;
  }
  return false;
}

// The objects a transcript assigns a Cox model to ("cx <- coxph(...)"),
// whose logLik() is a partial likelihood though the line does not say so.
std::set<std::string, std::less<>> CoxObjects(const Transcript& lines) {
  std::set<std::string, std::less<>> objects;
  for (const TranscriptLine& line : lines) {
    if (!line.command) continue;
    const std::string_view text = Trimmed(line.text);
    const std::size_t arrow = text.find("<-");
    const std::size_t equals = text.find('=');
    const std::size_t at = arrow != std::string_view::npos ? arrow : equals;
    if (at == std::string_view::npos) continue;
    const std::string_view value = Trimmed(text.substr(at + (at == arrow ? 2 : 1)));
    const std::string_view name = Trimmed(text.substr(0, at));
    if ((value.starts_with("coxph(") || value.starts_with("survival::coxph(")) && IsName(name)) {
      objects.emplace(name);
    }
  }
  return objects;
}

// "Call:" over a call ("zeroinfl(formula = ...") or with it on its line,
// knitr's "## " before them or not: how R prints any fit, with a
// likelihood or not.
bool HoldsPrintedCall(std::string_view text) {
  for (std::size_t at = text.find("Call:"); at != std::string_view::npos; at = text.find("Call:", at + 5)) {
    const std::size_t line = text.rfind('\n', at) + 1;  // npos + 1 is 0
    if (text.substr(line, at - line).find_first_not_of("# ") != std::string_view::npos) continue;
    std::string_view rest = text.substr(at + 5);
    const std::size_t first = rest.find_first_not_of("# \t\r\n");
    if (first == std::string_view::npos) return false;
    rest = rest.substr(first);
    const std::size_t open = rest.find('(');
    if (open == std::string_view::npos || open > rest.find('\n')) continue;
    std::string_view function = rest.substr(0, open);
    if (const std::size_t colons = function.rfind("::"); colons != std::string_view::npos) {
      function = function.substr(colons + 2);
    }
    if (IsName(function)) return true;
  }
  return false;
}

bool LooksLikeROutput(std::string_view text) {
  return text.find(kDevianceTable) != std::string_view::npos || text.find(kVarianceTable) != std::string_view::npos ||
         (text.find(kGamLink) != std::string_view::npos && text.find("Formula:") != std::string_view::npos) ||
         text.find("'log Lik.' ") != std::string_view::npos || HoldsAicTable(text) || HoldsPrintedCall(text) ||
         text.find("mixed-effects model fit by") != std::string_view::npos ||
         text.find("least squares fit by") != std::string_view::npos ||
         text.find("link  threshold nobs logLik AIC") != std::string_view::npos ||
         (text.find("Call:") != std::string_view::npos &&
          (text.find("Log-likelihood:") != std::string_view::npos ||
           text.find("Loglik(model)=") != std::string_view::npos || text.find("-2 log L:") != std::string_view::npos ||
           text.find("Residual standard error:") != std::string_view::npos ||
           text.find("Likelihood ratio test=") != std::string_view::npos)) ||
         (text.find("Formula:") != std::string_view::npos && text.find("df.resid") != std::string_view::npos) ||
         text.find("Residual deviance:") != std::string_view::npos ||
         (text.find("Degrees of Freedom:") != std::string_view::npos &&
          text.find("Residual Deviance:") != std::string_view::npos) ||
         text.find("mixed model fit by") != std::string_view::npos ||
         (text.find(" logLik ") != std::string_view::npos && text.find("AIC") != std::string_view::npos &&
          (text.find("# A tibble") != std::string_view::npos || text.find("\n1 ") != std::string_view::npos)) ||
         (text.find("Models:") != std::string_view::npos && text.find("logLik") != std::string_view::npos);
}

std::vector<FitRecord> ReadROutput(std::string_view text, ProgramOutput& output) {
  const Transcript lines = ReadTranscript(text);
  const auto coxObjects = CoxObjects(lines);
  std::vector<Found> found;
  std::vector<std::pair<std::int64_t, std::string>> skipped;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Piece piece = PieceAt(lines, i);
    if (piece == Piece::None) continue;
    // A piece ends where the next begins, or at the next command typed:
    // what is printed after it belongs to another output.
    std::size_t end = i + 1;
    while (end < lines.size() && !lines[end].command && PieceAt(lines, end) == Piece::None) ++end;
    const std::string_view command = CommandBefore(lines, i);
    // "$full" over an element of a printed list names it better than the
    // command that printed the whole list.
    const std::string element = ListElementName(lines, i);
    const std::string object = element.empty() ? PrintedObject(command) : element;
    const auto add = [&](std::optional<FitRecord> record) {
      if (record) found.push_back({std::move(*record), object});
    };
    switch (piece) {
      case Piece::Glm: add(ReadGlmSummary(lines, i, end, output)); break;
      case Piece::Mixed: add(ReadMixedSummary(lines, i, end, output)); break;
      case Piece::Anova:
        for (FitRecord& r : ReadAnovaTable(lines, i, end, output)) found.push_back({std::move(r), {}});
        break;
      case Piece::Lm: {
        std::string why;
        add(ReadLmSummary(lines, i, end, output, why));
        if (!why.empty()) skipped.emplace_back(lines[i].number, why);
        break;
      }
      case Piece::LogLik:
        if (const auto ll = ReadLogLikLine(lines[i].text)) {
          const bool reml = AsksForReml(command);
          if (!reml && Refine(found, object, *ll, lines[i].number, output)) break;
          FitRecord r = output.Model(lines[i].number);
          r.logLik = ll->value.value;
          r.logLikHalfUnit = ll->value.halfUnit;
          r.k = ll->df;
          if (reml) r.kind = LikelihoodKind::REML;
          r.derivation = "K = df of logLik(); " + std::string(kNNotPrinted);
          if (reml) r.derivation += "; REML, as the call asks";
          if (coxObjects.contains(object)) {
            r.kind = LikelihoodKind::Partial;
            r.derivation += "; partial, " + object + " being a coxph fit";
          }
          found.push_back({std::move(r), object});
          found.back().record.model = object;
        }
        break;
      case Piece::AicTable:
        for (FitRecord& r : ReadAicTable(lines, i, end, output)) found.push_back({std::move(r), {}});
        break;
      case Piece::Nlme: add(ReadNlmeFit(lines, i, end, output)); break;
      case Piece::Clm: add(ReadClmFit(lines, i, end, output)); break;
      case Piece::Glance: {
        std::string why;
        add(ReadGlance(lines, i, end, output, why));
        if (!why.empty()) skipped.emplace_back(lines[i].number, why);
        break;
      }
      case Piece::Other: {
        auto record = ReadCallFit(lines, i, end, output);
        if (!record) {
          const std::string call = PrintedCall(lines, i, end);
          skipped.emplace_back(lines[i].number, call.substr(0, call.find('(')) +
                                                    "() as printed here shows no log-likelihood that Drav reads; "
                                                    "print logLik(fit) after it");
        }
        add(std::move(record));
        break;
      }
      case Piece::Unread: skipped.emplace_back(lines[i].number, std::string(*WhyUnread(lines[i].text))); break;
      case Piece::None: break;
    }
    i = end - 1;
  }
  std::vector<FitRecord> records;
  records.reserve(found.size());
  for (Found& f : found) {
    if (f.record.model.empty()) f.record.model = f.object;
    // A Cox model's print shows no partial log-likelihood but for a null
    // model's; logLik() printed after it gives it, else it is left out.
    if (f.record.kind == LikelihoodKind::Partial && std::isnan(f.record.logLik)) {
      skipped.emplace_back(f.record.line, "coxph prints no partial log-likelihood; print logLik(fit) after it");
      continue;
    }
    records.push_back(std::move(f.record));
  }
  ShareN(records);
  output.NameUnnamed(records, Numbering::ByPlace);
  if (records.empty()) {
    std::string why = "R output, but no model with a likelihood in it (summary() of glm or lme4 fits, "
                      "anova() of lme4 fits, logLik())";
    for (const auto& [line, s] : skipped) why += "; line " + std::to_string(line) + ": " + s;
    output.Refuse(0, std::move(why));
  }
  for (const auto& [line, s] : skipped) output.Note(s, line);
  return records;
}

}  // namespace

extern const ProgramReader kRReader{.looksLike = LooksLikeROutput, .read = ReadROutput};

}  // namespace drav::selection::fits
