#include "selection/criterion.hpp"

#include <cmath>

namespace drav::selection {

std::string_view Name(Criterion criterion) {
  switch (criterion) {
    case Criterion::AIC: return "aic";
    case Criterion::AICc: return "aicc";
    case Criterion::BIC: return "bic";
    case Criterion::QAIC: return "qaic";
  }
  return "aic";
}

std::string_view Title(Criterion criterion) {
  switch (criterion) {
    case Criterion::AIC: return "AIC";
    case Criterion::AICc: return "AICc";
    case Criterion::BIC: return "BIC";
    case Criterion::QAIC: return "QAIC";
  }
  return "AIC";
}

std::optional<Criterion> CriterionNamed(std::string_view name) {
  for (Criterion c : {Criterion::AIC, Criterion::AICc, Criterion::BIC, Criterion::QAIC}) {
    if (name == Name(c)) return c;
  }
  return std::nullopt;
}

bool NeedsN(Criterion criterion) { return criterion == Criterion::AICc || criterion == Criterion::BIC; }

double Compute(Criterion criterion, const Fit& fit) {
  const double aic = -2 * fit.logLik + 2 * fit.k;
  switch (criterion) {
    case Criterion::AIC: return aic;
    case Criterion::AICc: return aic + 2 * fit.k * (fit.k + 1) / (fit.n - fit.k - 1);
    case Criterion::BIC: return -2 * fit.logLik + fit.k * std::log(fit.n);
    case Criterion::QAIC: return -2 * fit.logLik / fit.chat + 2 * fit.k;
  }
  return aic;
}

}  // namespace drav::selection
