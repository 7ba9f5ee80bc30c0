#pragma once
// The information criteria a model set can be ranked by, and how each is
// computed from a model's maximised log-likelihood, its number of estimated
// parameters K and its number of observations n (Burnham & Anderson 2002,
// chapter 2).
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

namespace drav::selection {

enum class Criterion {
  AIC,   // -2 logLik + 2K
  AICc,  // AIC + 2K(K+1)/(n-K-1), for samples small against K
  BIC,   // -2 logLik + K ln n
  QAIC,  // -2 logLik / c + 2K, for overdispersed counts with factor c
  QAICc, // QAIC + 2K(K+1)/(n-K-1): overdispersed counts in a small sample
};

inline constexpr Criterion kCriteria[] = {Criterion::AIC, Criterion::AICc, Criterion::BIC, Criterion::QAIC,
                                          Criterion::QAICc};
inline constexpr std::size_t kCriterionCount = std::size(kCriteria);

// What a criterion is computed from; n only for AICc, QAICc and BIC, c only
// for QAIC and QAICc.
struct Fit {
  double logLik = 0;
  double k = 0;
  double n = 0;
  double chat = 1;
};

// The lower-case name used for columns and options: aic, aicc, bic, qaic,
// qaicc.
std::string_view Name(Criterion criterion);
// The name as printed in tables for people: AIC, AICc, BIC, QAIC, QAICc.
std::string_view Title(Criterion criterion);
std::optional<Criterion> CriterionNamed(std::string_view name);

bool NeedsN(Criterion criterion);
// QAIC and QAICc divide the log-likelihood by the overdispersion factor.
bool NeedsChat(Criterion criterion);
// AICc and QAICc have no finite value unless n > K + 1.
bool HasSmallSampleTerm(Criterion criterion);

// The criterion's value. AICc or QAICc with n <= K + 1 has no finite value; the
// caller refuses such a model before it asks.
double Compute(Criterion criterion, const Fit& fit);

}  // namespace drav::selection
