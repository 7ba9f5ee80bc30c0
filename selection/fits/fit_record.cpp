#include "selection/fits/fit_record.hpp"

#include <cmath>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {

std::string_view Name(LikelihoodKind kind) {
  switch (kind) {
    case LikelihoodKind::ML: return "ML";
    case LikelihoodKind::REML: return "REML";
    case LikelihoodKind::Pseudo: return "pseudo";
    case LikelihoodKind::ConstantsDropped: return "constants dropped";
    case LikelihoodKind::Scaled: return "scaled";
    case LikelihoodKind::Partial: return "partial";
    case LikelihoodKind::None: return "none";
  }
  return "unknown";
}

void GiveN(std::vector<FitRecord>& records, double n) {
  const std::string given = "n = " + Shown(n) + " from --n";
  for (FitRecord& r : records) {
    if (!std::isnan(r.n)) continue;
    r.n = n;
    if (const auto at = r.derivation.find(kNNotPrinted); at != std::string::npos) {
      r.derivation.replace(at, kNNotPrinted.size(), given);
    } else {
      AddStep(r.derivation, given);
    }
  }
}

std::string Where(const FitRecord& r) {
  std::string where = r.source;
  if (r.line > 0) where.append(1, ':').append(std::to_string(r.line));
  return where;
}

std::string Named(const FitRecord& r) { return "'" + r.model + "' (" + r.program + ", " + Where(r) + ")"; }

}  // namespace drav::selection::fits
