#include "selection/fits/fit_candidates.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>

#include "base/errors.hpp"
#include "selection/fits/fit_refusal.hpp"
#include "selection/fits/printed_text.hpp"
#include "selection/table/candidate_faults.hpp"

namespace drav::selection::fits {
namespace {

// A model that cannot be ranked whatever the others are: refused, its
// ranking left to the others, or, with `leaveOut`, left out with a warning
// that names it and says why.
class Unrankable {
 public:
  Unrankable(bool leaveOut, bool others, Diagnostics& diagnostics)
      : leaveOut_(leaveOut), others_(others), diagnostics_(diagnostics) {}

  // False where `r` is left out.
  bool Keep(const FitRecord& r, std::string why) const {
    if (!leaveOut_) Refuse(r.source, r.line, others_ ? why + " (--only-rankable ranks the others)" : why);
    diagnostics_.Warn("left out: " + why, r.source, r.line);
    return false;
  }

 private:
  bool leaveOut_;
  bool others_;  // more models than one were read
  Diagnostics& diagnostics_;
};

// A model without a likelihood, or with a pseudolikelihood.
bool HasLikelihood(const FitRecord& r, const Unrankable& unrankable) {
  if (r.kind != LikelihoodKind::None && r.kind != LikelihoodKind::Pseudo) return true;
  const std::string why = !r.warnings.empty()                 ? r.warnings.front()
                          : r.kind == LikelihoodKind::Pseudo ? "a pseudolikelihood ranks nothing by AIC"
                                                              : "its estimator gives no likelihood";
  return unrankable.Keep(r, "model '" + r.model + "' cannot be ranked: " + why);
}

// "'a' (R, x.txt:1) has an ML likelihood and 'b' (R, y.txt:3) a REML one"
std::string KindsOf(const FitRecord& a, const FitRecord& b) {
  const auto article = [](LikelihoodKind kind) { return kind == LikelihoodKind::ML ? "an " : "a "; };
  return Named(a) + " has " + article(a.kind) + std::string(Name(a.kind)) + " likelihood and " + Named(b) + " " +
         article(b.kind) + std::string(Name(b.kind)) + " one";
}

// How each model's likelihood may be compared. A REML or a partial
// likelihood beside any other kind is refused: neither is a full
// likelihood of the data (REML has integrated the fixed effects away, Cox's
// partial likelihood is of the order of the events alone), so no AIC puts
// them on one scale with one. Any other two kinds are warned of. Each names
// the first model of the set and the first of another kind.
void CheckKinds(const std::vector<FitRecord>& records, Diagnostics& diagnostics) {
  const FitRecord& first = records.front();
  const auto kindOtherThan = [&](LikelihoodKind kind, bool same) {
    return std::find_if(records.begin(), records.end(), [&](const FitRecord& r) { return (r.kind == kind) == same; });
  };
  const auto other = kindOtherThan(first.kind, false);
  if (other == records.end()) return;
  for (const LikelihoodKind apart : {LikelihoodKind::REML, LikelihoodKind::Partial}) {
    const auto inside = kindOtherThan(apart, true);
    const auto outside = kindOtherThan(apart, false);
    if (inside == records.end() || outside == records.end()) continue;
    // The pair as the set meets it: the first model, then the first of
    // another kind where that pair is the one.
    const bool firstPair = first.kind == apart || other->kind == apart;
    const FitRecord& a = firstPair ? first : *std::min(inside, outside);
    const FitRecord& b = firstPair ? *other : *std::max(inside, outside);
    const std::string both = KindsOf(a, b);
    if (apart == LikelihoodKind::REML) {
      Refuse(inside->source, inside->line,
             both + "; a REML likelihood leaves out the fixed effects and is no AIC's: refit with REML = FALSE (lme4) "
                    "or method = \"ML\" to rank them together");
    }
    Refuse(inside->source, inside->line,
           both + "; a Cox model's partial likelihood is of the order of the events, not of the data, and ranks only "
                  "beside other Cox models of the same events: rank it with those, or fit a parametric survival "
                  "model (survreg, streg) to rank it beside full likelihoods");
  }
  diagnostics.Warn(KindsOf(first, *other) + "; their criteria are not on one scale");
}

void CheckSampleSizes(const std::vector<FitRecord>& records, Diagnostics& diagnostics) {
  const auto known = std::find_if(records.begin(), records.end(), [](const FitRecord& r) { return !std::isnan(r.n); });
  if (known == records.end()) return;
  for (const FitRecord& r : records) {
    if (std::isnan(r.n) || r.n == known->n) continue;
    diagnostics.Warn("the models were fitted to different numbers of observations: " + Named(*known) + " to n = " +
                     Shown(known->n) + ", " + Named(r) + " to n = " + Shown(r.n) + "; their criteria are not comparable");
    return;
  }
}

void CheckCounting(const std::vector<FitRecord>& records, Diagnostics& diagnostics) {
  const auto odd = std::find_if(records.begin(), records.end(), [](const FitRecord& r) { return !r.counting.empty(); });
  if (odd == records.end()) return;
  for (const FitRecord& r : records) {
    if (r.program == odd->program) continue;
    diagnostics.Warn(Named(*odd) + " and " + Named(r) + " come from programs whose AICs count parameters differently (" +
                     odd->counting + "); their criteria may not be on one scale");
    return;
  }
}

// A printed AIC must agree with -2 logLik + 2K to its printed digits and
// half a unit more, as a table's AIC column must. The first that does not
// is warned of, with how many more do not.
void CheckPrintedAics(const std::vector<FitRecord>& records, Diagnostics& diagnostics) {
  const FitRecord* first = nullptr;
  std::size_t more = 0;
  for (const FitRecord& r : records) {
    if (std::isnan(r.aic) || std::isnan(r.logLik) || std::isnan(r.k)) continue;
    const double off = r.aic - (-2 * r.logLik + 2 * r.k);
    const double tolerance = 0.5 + 2 * r.logLikHalfUnit + 1e-9 * std::fabs(r.aic);
    if (std::fabs(off) <= tolerance) continue;
    // A program that leaves one parameter Drav counts out of its AIC
    // prints 2 less, and says so in its counting.
    if (!r.counting.empty() && std::fabs(off + 2) <= tolerance) {
      diagnostics.Note("the printed AIC " + Shown(r.aic) + " of " + Named(r) + " is " +
                       Shown(std::round(-off * 100) / 100) + " below -2 logLik + 2K: " + r.counting);
    } else if (!first) {
      first = &r;
    } else {
      ++more;
    }
  }
  if (!first) return;
  diagnostics.Warn("the printed AIC " + Shown(first->aic) + " of " + Named(*first) + " implies K = " +
                   Shown(std::round((first->aic + 2 * first->logLik) / 2 * 100) / 100) + ", but K = " +
                   Shown(first->k) + " was read; AIC = -2 logLik + 2K" +
                   (more > 0 ? "; " + std::to_string(more) + " more models disagree" : ""));
}

void CheckNames(const std::vector<FitRecord>& records, Diagnostics& diagnostics) {
  std::vector<const FitRecord*> byName;
  for (const FitRecord& r : records) byName.push_back(&r);
  std::stable_sort(byName.begin(), byName.end(), [](const FitRecord* a, const FitRecord* b) { return a->model < b->model; });
  for (std::size_t i = 1; i < byName.size(); ++i) {
    if (byName[i]->model != byName[i - 1]->model) continue;
    diagnostics.Warn("two models are named '" + byName[i]->model + "' (" + Where(*byName[i - 1]) + " and " +
                     Where(*byName[i]) + "); --model-names FILE names them");
    return;
  }
}

// Two models whose criteria differ by less than the programs printed them
// to are in an order that the printed digits cannot tell.
void NoteUnprintedDigits(const std::vector<FitRecord>& records, const CandidateTable& table, Diagnostics& diagnostics) {
  std::vector<std::size_t> order(records.size());
  std::iota(order.begin(), order.end(), 0);
  const auto& models = table.models;
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return models[a].set != models[b].set ? models[a].set < models[b].set : models[a].value < models[b].value;
  });
  for (std::size_t i = 1; i < order.size(); ++i) {
    if (models[order[i]].set != models[order[i - 1]].set) continue;
    const FitRecord& a = records[order[i - 1]];
    const FitRecord& b = records[order[i]];
    const double apart = table.models[order[i]].value - table.models[order[i - 1]].value;
    const double blur = 2 * (a.logLikHalfUnit + b.logLikHalfUnit);
    if (apart > 0 && apart < blur) {
      diagnostics.Note(Named(a) + " and " + Named(b) + " differ by " + Shown(std::round(apart * 1000) / 1000) + " in " +
                       std::string(Title(table.criterion)) + ", less than the +/-" + Shown(std::round(blur * 1e4) / 1e4) +
                       " to which their printed log-likelihoods fix it; their order is not known");
      return;
    }
  }
}

// statsmodels prints five significant digits, coarser than the others
// for a large log-likelihood: said once when it is ranked beside them.
void NoteCoarseDigits(const std::vector<FitRecord>& records, Diagnostics& diagnostics) {
  const auto coarse = std::max_element(records.begin(), records.end(), [](const FitRecord& a, const FitRecord& b) {
    return (a.program == "statsmodels" ? a.logLikHalfUnit : -1) < (b.program == "statsmodels" ? b.logLikHalfUnit : -1);
  });
  if (coarse == records.end() || coarse->program != "statsmodels") return;
  const auto other = std::find_if(records.begin(), records.end(), [](const FitRecord& r) { return r.program != "statsmodels"; });
  if (other == records.end()) return;
  diagnostics.Note("statsmodels prints log-likelihoods to 4 or 5 significant digits (" + Named(*coarse) + ": +/-" +
                   Shown(coarse->logLikHalfUnit) + "), coarser than " + other->program +
                   "; differences in AIC within twice that say nothing");
}

// The set of each record under --by, which names a column of the listing
// that tells sets apart: each file a set ("source") or each program; one
// set without. The sets' names go into `table`.
std::vector<std::uint32_t> SetsOf(const std::vector<FitRecord>& records, const std::string& by, CandidateTable& table) {
  if (!by.empty() && by != "source" && by != "program") {
    throw UsageError("with --fits, --by is source (each file a set of its own) or program, not '" + by + "'");
  }
  std::vector<std::uint32_t> sets;
  std::unordered_map<std::string, std::uint32_t> index;
  table.byName = by;
  for (const FitRecord& r : records) {
    const std::string& value = by.empty() ? by : by == "source" ? r.source : r.program;
    const auto [at, added] = index.emplace(value, static_cast<std::uint32_t>(table.sets.size()));
    if (added) table.sets.push_back(value);
    sets.push_back(at->second);
  }
  return sets;
}

}  // namespace

CandidateTable CandidatesFromFits(const std::vector<FitRecord>& read, const LoadOptions& options,
                                  Diagnostics& diagnostics, bool leaveOut, std::vector<std::size_t>* kept) {
  if (read.empty()) Refuse({}, 0, "no models in the outputs read");
  const Unrankable unrankable(leaveOut, read.size() > 1, diagnostics);
  std::vector<FitRecord> records;
  std::vector<std::size_t> origin;  // of each of `records` in `read`
  for (std::size_t i = 0; i < read.size(); ++i) {
    const FitRecord& r = read[i];
    if (HasLikelihood(r, unrankable) && (!std::isnan(r.k) || unrankable.Keep(r, "model '" + r.model + "': K is not printed nor derivable"))) {
      records.push_back(r);
      origin.push_back(i);
    }
  }
  if (records.empty()) Refuse({}, 0, "no model of the outputs read can be ranked");
  if (!options.roles.k.empty() || !options.modelColumn.empty() || !options.roles.terms.empty()) {
    throw UsageError("--k, --model and --term name columns of a table; the outputs read with --fits have none");
  }
  CandidateTable table;
  const std::vector<std::uint32_t> sets = SetsOf(records, options.byColumn, table);
  // What must hold of the models ranked together holds within each set.
  std::vector<std::vector<FitRecord>> bySet(table.sets.size());
  for (std::size_t i = 0; i < records.size(); ++i) bySet[sets[i]].push_back(records[i]);
  for (const std::vector<FitRecord>& members : bySet) {
    CheckKinds(members, diagnostics);
    CheckSampleSizes(members, diagnostics);
    CheckCounting(members, diagnostics);
    NoteCoarseDigits(members, diagnostics);
    CheckNames(members, diagnostics);
  }

  const bool allN = std::none_of(records.begin(), records.end(), [](const FitRecord& r) { return std::isnan(r.n); });
  table.criterion = options.criterion.value_or(allN ? Criterion::AICc : Criterion::AIC);
  if (NeedsChat(table.criterion)) {
    if (!options.chat) throw UsageError(std::string(Title(table.criterion)) + " needs --chat");
    table.chat = std::max(1.0, *options.chat);
  } else if (options.chat) {
    throw UsageError("--chat is the overdispersion factor of QAIC and QAICc; add --criterion qaic or qaicc");
  }
  table.models.reserve(records.size());
  std::vector<FitRecord> ranked;  // the records of table.models, one for one
  CheckPrintedAics(records, diagnostics);
  if (kept) kept->clear();
  for (std::size_t i = 0; i < records.size(); ++i) {
    const FitRecord& r = records[i];
    if (NeedsN(table.criterion) && std::isnan(r.n)) {
      unrankable.Keep(r, "model '" + r.model + "': " + std::string(Title(table.criterion)) +
                             " needs n, which this output does not print; --n N gives it");
      continue;
    }
    Candidate c;
    c.model = r.model;
    c.logLik = r.logLik;
    c.k = r.k;
    c.n = r.n;
    c.line = r.line;
    c.set = sets[i];
    c.value = Compute(table.criterion, {r.logLik, r.k, std::isnan(r.n) ? 0 : r.n, table.chat});
    // Held to what a table's rows are, in the same words; what a row names
    // by its column, a fit names by its value.
    if (const CandidateFault fault = FaultOf(c, table.criterion); fault != CandidateFault::None) {
      const std::string held = InK(fault)   ? " has K = " + Shown(r.k) + "; "
                               : InN(fault) ? " has n = " + Shown(r.n) + "; "
                                            : ": ";
      unrankable.Keep(r, "model '" + r.model + "'" + held + Why(fault, c, table.criterion));
      continue;
    }
    table.models.push_back(std::move(c));
    ranked.push_back(r);
    if (kept) kept->push_back(origin[i]);
  }
  if (table.models.empty()) Refuse({}, 0, "no model of the outputs read can be ranked");
  NoteUnprintedDigits(ranked, table, diagnostics);
  return table;
}

}  // namespace drav::selection::fits
