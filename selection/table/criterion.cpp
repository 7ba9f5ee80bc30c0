#include "selection/table/criterion.hpp"

#include <cmath>

namespace drav::selection {

std::string_view Name(Criterion criterion) {
  switch (criterion) {
    case Criterion::AIC: return "aic";
    case Criterion::AICc: return "aicc";
    case Criterion::BIC: return "bic";
    case Criterion::QAIC: return "qaic";
    case Criterion::QAICc: return "qaicc";
  }
  return "aic";
}

std::string_view Title(Criterion criterion) {
  switch (criterion) {
    case Criterion::AIC: return "AIC";
    case Criterion::AICc: return "AICc";
    case Criterion::BIC: return "BIC";
    case Criterion::QAIC: return "QAIC";
    case Criterion::QAICc: return "QAICc";
  }
  return "AIC";
}

std::optional<Criterion> CriterionNamed(std::string_view name) {
  for (Criterion c : kCriteria) {
    if (name == Name(c)) return c;
  }
  return std::nullopt;
}

bool NeedsN(Criterion criterion) { return HasSmallSampleTerm(criterion) || criterion == Criterion::BIC; }

bool NeedsChat(Criterion criterion) { return criterion == Criterion::QAIC || criterion == Criterion::QAICc; }

bool HasSmallSampleTerm(Criterion criterion) {
  return criterion == Criterion::AICc || criterion == Criterion::QAICc;
}

double Compute(Criterion criterion, const Fit& fit) {
  const double aic = -2 * fit.logLik + 2 * fit.k;
  const double qaic = -2 * fit.logLik / fit.chat + 2 * fit.k;
  const auto smallSample = [&fit] { return 2 * fit.k * (fit.k + 1) / (fit.n - fit.k - 1); };
  switch (criterion) {
    case Criterion::AIC: return aic;
    case Criterion::AICc: return aic + smallSample();
    case Criterion::BIC: return -2 * fit.logLik + fit.k * std::log(fit.n);
    case Criterion::QAIC: return qaic;
    case Criterion::QAICc: return qaic + smallSample();
  }
  return aic;
}

}  // namespace drav::selection
