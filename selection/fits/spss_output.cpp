// SPSS output as text, exported from the viewer or pasted from it: the
// Information Criteria and Model Dimension of MIXED, and the Goodness of Fit
// of GENLIN, one record for each model. Such text comes aligned with blanks,
// split by tabs or bars, or one cell to a line with long labels broken;
// footnote letters stick to the words they mark ("Information Criteriaa").
// The tables print no n, and MIXED's AIC under REML no fixed effects: both
// are worked out, and the record's derivation says how. The viewer's binary
// files (.spv, .spo) are refused, saying how to export text, and so are
// tables whose criteria are not numbers.
#include <cmath>
#include <optional>

#include "selection/fits/printed_text.hpp"
#include "selection/fits/program_output.hpp"

namespace drav::selection::fits {
namespace {

constexpr std::string_view kZip = "PK\x03\x04";
constexpr std::string_view kOle = "\xD0\xCF\x11\xE0";

// A table's title, with or without the footnote mark stuck to it:
// "Information Criteria", "Information Criteriaa", "... (a)", "...^a".
bool IsTitle(std::string_view line, std::string_view title) {
  line = Trimmed(line);
  if (!line.starts_with(title)) return false;
  std::string_view mark = Trimmed(line.substr(title.size()));
  return mark.size() <= 4 && mark.find_first_not_of("abcdefgh()^[] ") == std::string_view::npos;
}

// "a. Dependent Variable: y.", under a table.
bool IsFootnote(std::string_view line) {
  line = Trimmed(line);
  return line.size() > 2 && line[0] >= 'a' && line[0] <= 'h' && line[1] == '.' && line[2] == ' ';
}

// A table's cells as one line of words: however the export laid them out,
// a label and its value follow one another.
std::string Cells(const std::vector<TextLine>& lines, std::size_t from, std::size_t to) {
  std::string cells;
  for (std::size_t i = from; i < to; ++i) {
    for (std::string_view word : Words(lines[i].text)) {
      while (!word.empty() && word.front() == '|') word.remove_prefix(1);
      while (!word.empty() && word.back() == '|') word.remove_suffix(1);
      if (word.empty()) continue;
      if (!cells.empty()) cells += ' ';
      cells += word;
    }
  }
  return cells;
}

class SpssReader {
 public:
  explicit SpssReader(ProgramOutput& output) : output_(output) {}

  std::vector<FitRecord> Read(std::string_view text) {
    lines_ = SplitLines(text);
    decimalComma_ = DecimalComma();
    std::string title;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      const std::string_view line = Trimmed(lines_[i].text);
      if (line == "Mixed Model Analysis" || line == "Generalized Linear Models") {
        heading_ = lines_[i].number;
        dimensionTotal_.reset();
      } else if (StartsWithNoCase(line, "TITLE ") || StartsWithNoCase(line, "TITLE=")) {
        title = Quoted(line);
      } else if (IsTitle(line, "Model Dimension")) {
        dimensionTotal_ = DimensionTotal(i);
      } else if (IsTitle(line, "Information Criteria")) {
        records_.push_back(Mixed(i, title));
      } else if (IsTitle(line, "Goodness of Fit")) {
        records_.push_back(Genlin(i, title));
      }
    }
    output_.NameUnnamed(records_, Numbering::WhereRepeated);
    return std::move(records_);
  }

 private:
  // The viewer writes numbers with the decimal mark of the machine's
  // locale: a file with no number like 1.5 and some like 1,5 has commas.
  bool DecimalComma() const {
    bool comma = false;
    for (const auto& line : lines_) {
      const std::string_view text = line.text;
      for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        const bool between = text[i - 1] >= '0' && text[i - 1] <= '9' && text[i + 1] >= '0' && text[i + 1] <= '9';
        if (between && text[i] == '.') return false;
        if (between && text[i] == ',') comma = true;
      }
    }
    return comma;
  }

  static std::string Quoted(std::string_view line) {
    const std::size_t open = line.find_first_of("'\"");
    if (open == std::string_view::npos) return {};
    const std::size_t close = line.find(line[open], open + 1);
    if (close == std::string_view::npos) return {};
    return std::string(line.substr(open + 1, close - open - 1));
  }

  // The lines of a table's body: up to its footnotes or the next table.
  std::size_t TableEnd(std::size_t title) const {
    std::size_t i = title + 1;
    for (; i < lines_.size() && i < title + 80; ++i) {
      const std::string_view line = Trimmed(lines_[i].text);
      if (IsFootnote(line) || line.starts_with("The information criteria are") ||
          line.starts_with("Information criteria are") || IsTitle(line, "Fixed Effects") ||
          IsTitle(line, "Type III Tests of Fixed Effects") || IsTitle(line, "Omnibus Test") ||
          IsTitle(line, "Estimates of Fixed Effects") || IsTitle(line, "Tests of Model Effects")) {
        break;
      }
    }
    return i;
  }

  // The value after `label` among the cells: the first number, past the
  // footnote letters that may follow the label.
  std::optional<Printed> After(const std::string& cells, std::string_view label) const {
    const std::size_t at = cells.find(label);
    if (at == std::string::npos) return std::nullopt;
    const auto words = Words(std::string_view(cells).substr(at + label.size()));
    for (std::size_t i = 0; i < words.size() && i < 2; ++i) {
      if (const auto value = ReadGrouped(words[i], decimalComma_ ? '.' : ',', decimalComma_)) return value;
    }
    return std::nullopt;
  }

  std::optional<double> DimensionTotal(std::size_t title) const {
    const std::string cells = Cells(lines_, title + 1, TableEnd(title));
    const std::size_t at = cells.rfind("Total ");
    if (at == std::string::npos) return std::nullopt;
    std::optional<double> last;
    for (const auto word : Words(std::string_view(cells).substr(at + 6))) {
      const auto value = ReadGrouped(word, decimalComma_ ? '.' : ',', decimalComma_);
      if (!value) break;
      last = value->value;  // levels, then parameters
    }
    return last;
  }

  FitRecord Begin(std::size_t title, const std::string& name) const {
    FitRecord record = output_.Model(heading_ > 0 ? heading_ : lines_[title].number);
    record.model = name;
    return record;
  }

  Printed Need(const std::string& cells, std::string_view label, std::size_t title) const {
    const auto value = After(cells, label);
    if (!value) {
      output_.Refuse(lines_[title].number,
                     "the table has no number after '" + std::string(label) + "'; copy or export it whole");
    }
    return *value;
  }

  // n from the BIC, -2ℓ + d·ln(n), checked against what printing allows.
  std::optional<double> SampleFromBic(const Printed& bic, const Printed& m2ll, double d) const {
    if (d <= 0) return std::nullopt;
    const double n = std::round(std::exp((bic.value - m2ll.value) / d));
    if (std::fabs(m2ll.value + d * std::log(n) - bic.value) > bic.halfUnit + m2ll.halfUnit + 1e-9) return std::nullopt;
    return n;
  }

  FitRecord Mixed(std::size_t title, const std::string& name) {
    const std::string cells = Cells(lines_, title + 1, TableEnd(title));
    const bool restricted = cells.find("-2 Restricted Log Likelihood") != std::string::npos;
    const Printed m2ll = Need(cells, restricted ? "-2 Restricted Log Likelihood" : "-2 Log Likelihood", title);
    const Printed aic = Need(cells, "Akaike's Information Criterion (AIC)", title);
    const auto bic = After(cells, "Schwarz's Bayesian Criterion (BIC)");
    FitRecord record = Begin(title, name);
    record.kind = restricted ? LikelihoodKind::REML : LikelihoodKind::ML;
    record.logLik = -m2ll.value / 2;
    record.logLikHalfUnit = m2ll.halfUnit / 2;
    record.aic = aic.value;
    if (bic) record.bic = bic->value;
    const auto d = WholeNumber((aic.value - m2ll.value) / 2, (aic.halfUnit + m2ll.halfUnit) / 2 + 1e-9);
    if (!d) {
      output_.Flag(record, "the printed AIC is not -2 log likelihood + 2K for a whole K; K is unknown",
                   lines_[title].number);
      return record;
    }
    record.k = *d;
    record.derivation = "K = (AIC - (-2 log likelihood)) / 2";
    // Under REML the AIC counts the covariance parameters only; the fixed
    // effects are the rest of Model Dimension's total, and SPSS takes n - p
    // for n in BIC.
    const double fixed = restricted && dimensionTotal_ ? *dimensionTotal_ - *d : 0;
    if (restricted) record.counting = "REML: SPSS's AIC counts the covariance parameters only";
    if (!restricted && dimensionTotal_ && *dimensionTotal_ != *d) {
      output_.Flag(record, "the AIC counts " + Whole(*d) + " parameters, Model Dimension " + Whole(*dimensionTotal_),
                   lines_[title].number);
    }
    const auto effective = bic ? SampleFromBic(*bic, m2ll, *d) : std::nullopt;
    if (effective && (!restricted || dimensionTotal_)) {
      record.n = *effective + fixed;
      record.derivation += restricted ? "; n = " + Whole(*effective) + " from BIC = -2RLL + K ln(n - p), plus the " +
                                            Whole(fixed) + " fixed effects of Model Dimension's total"
                                      : "; n from BIC = -2LL + K ln(n)";
    } else {
      output_.Note(std::string("n cannot be worked out: ") +
                       (effective ? "REML needs the Model Dimension table for the fixed effects"
                                  : "the BIC does not give a whole n"),
                   lines_[title].number);
    }
    return record;
  }

  FitRecord Genlin(std::size_t title, const std::string& name) {
    const std::size_t end = TableEnd(title);
    const std::string cells = Cells(lines_, title + 1, end);
    const Printed ll = Need(cells, "Log Likelihood", title);
    const Printed aic = Need(cells, "Akaike's Information Criterion (AIC)", title);
    const auto bic = After(cells, "Bayesian Information Criterion (BIC)");
    FitRecord record = Begin(title, name);
    record.logLik = ll.value;
    record.logLikHalfUnit = ll.halfUnit;
    record.aic = aic.value;
    if (bic) record.bic = bic->value;
    // A footnote says whether the log likelihood is the full one or its
    // kernel; the criteria are made from the same.
    for (std::size_t i = end; i < lines_.size() && i < end + 6; ++i) {
      if (ContainsNoCase(lines_[i].text, "kernel of the log likelihood")) record.kind = LikelihoodKind::ConstantsDropped;
    }
    const Printed m2ll{-2 * ll.value, 2 * ll.halfUnit};
    const auto k = WholeNumber((aic.value - m2ll.value) / 2, (aic.halfUnit + m2ll.halfUnit) / 2 + 1e-9);
    if (!k) {
      output_.Flag(record, "the printed AIC is not -2 log likelihood + 2K for a whole K; K is unknown",
                   lines_[title].number);
      return record;
    }
    record.k = *k;
    record.derivation = "K = (AIC + 2 log likelihood) / 2";
    if (const auto n = bic ? SampleFromBic(*bic, m2ll, *k) : std::nullopt) {
      record.n = *n;
      record.derivation += "; n from BIC = -2LL + K ln(n)";
    } else {
      output_.Note("n cannot be worked out from the BIC", lines_[title].number);
    }
    return record;
  }

  static std::string Whole(double value) { return std::to_string(static_cast<long long>(std::llround(value))); }

  ProgramOutput& output_;
  std::vector<TextLine> lines_;
  std::vector<FitRecord> records_;
  std::optional<double> dimensionTotal_;
  std::int64_t heading_ = 0;
  bool decimalComma_ = false;
};

// The viewer's file (.spv), a zip of XML and binary parts, which its first
// 64 KiB tell.
bool IsSpssViewerFile(std::string_view start) {
  return start.starts_with(kZip) && Opening(start, 1 << 16).find("outputViewer") != std::string_view::npos;
}

bool LooksLikeSpssOutput(std::string_view text) {
  if (text.starts_with(kZip)) return IsSpssViewerFile(text);
  if (text.starts_with(kOle)) return false;
  // An export a cell to a line breaks the label ("Akaike's", "Information",
  // "Criterion (AIC)" on lines of their own): its pieces are looked for.
  const std::string_view head = Opening(text);
  return head.find("Akaike's") != std::string_view::npos && head.find("Criterion (AIC)") != std::string_view::npos &&
         (head.find("Information Criteria") != std::string_view::npos ||
          head.find("Goodness of Fit") != std::string_view::npos);
}

std::vector<FitRecord> ReadSpssOutput(std::string_view text, ProgramOutput& output) {
  if (text.starts_with(kZip) || (text.starts_with(kOle) && output.Source().ends_with(".spo"))) {
    // The viewer's file is a zip of XML and binary table parts with no
    // published description; no small decoder reads it reliably.
    output.Refuse(0, "an SPSS viewer file is binary; Drav reads the viewer's text. In the Output Viewer choose File > "
                     "Export, type 'Text - Plain (*.txt)', or select the tables, copy them and paste them into a text "
                     "file");
  }
  return SpssReader(output).Read(text);
}

}  // namespace

extern const ProgramReader kSpssReader{
    .looksLike = LooksLikeSpssOutput, .read = ReadSpssOutput, .ownsBinary = IsSpssViewerFile};

}  // namespace drav::selection::fits
