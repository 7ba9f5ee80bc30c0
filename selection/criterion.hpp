#pragma once
// The information criteria a model set can be ranked by, and how each is
// computed from a model's maximised log-likelihood, its number of estimated
// parameters K and its number of observations n (Burnham & Anderson 2002,
// chapter 2).
#include <optional>
#include <string_view>

namespace drav::selection {

enum class Criterion {
  AIC,   // -2 logLik + 2K
  AICc,  // AIC + 2K(K+1)/(n-K-1), for samples small against K
  BIC,   // -2 logLik + K ln n
  QAIC,  // -2 logLik / c + 2K, for overdispersed counts with factor c
};

// What a criterion is computed from; n only for AICc and BIC, c only for
// QAIC.
struct Fit {
  double logLik = 0;
  double k = 0;
  double n = 0;
  double chat = 1;
};

// The lower-case name used for columns and options: aic, aicc, bic, qaic.
std::string_view Name(Criterion criterion);
// The name as printed in tables for people: AIC, AICc, BIC, QAIC.
std::string_view Title(Criterion criterion);
std::optional<Criterion> CriterionNamed(std::string_view name);

bool NeedsN(Criterion criterion);

// The criterion's value. AICc with n <= K + 1 has no finite value; the
// caller refuses such a model before it asks.
double Compute(Criterion criterion, const Fit& fit);

}  // namespace drav::selection
