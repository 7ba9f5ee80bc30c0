#include "selection/input/criterion_choice.hpp"

#include "base/errors.hpp"
#include "base/message_text.hpp"

namespace drav::selection {

CriterionChoice ChooseCriterion(const ColumnRoles& roles, const std::vector<std::string>& header,
                                const LoadOptions& options, const std::string& fileName, Diagnostics& diagnostics) {
  const auto column = [&](Criterion c) { return roles.criterion[static_cast<std::size_t>(c)]; };
  CriterionChoice choice;
  if (options.criterion) {
    choice.criterion = *options.criterion;
  } else if (roles.firstCriterion) {
    choice.criterion = *roles.firstCriterion;
  } else {
    choice.criterion = roles.n && roles.logLik && roles.k ? Criterion::AICc : Criterion::AIC;
  }
  choice.computed = !column(choice.criterion);
  const std::string title(Title(choice.criterion));
  if (options.chat && !NeedsChat(choice.criterion)) {
    throw UsageError("--chat is the overdispersion factor of QAIC and QAICc, but the table is ranked by " + title +
                     "; add --criterion qaic or qaicc");
  }
  if (options.chat && !choice.computed) {
    throw UsageError("--chat would change nothing: " + title + " is read from column " +
                     Quoted(header[*column(choice.criterion)]) + " as the file gives it; leave out --chat");
  }
  if (!choice.computed) return choice;
  const std::string needs = NeedsN(choice.criterion) ? "loglik, k and n" : "loglik and k";
  if (!roles.logLik || !roles.k || (NeedsN(choice.criterion) && !roles.n)) {
    Refuse({.file = fileName,
            .text = "no column " + std::string(Name(choice.criterion)) + ", nor " + needs + " to compute " + title +
                    " from"});
  }
  if (NeedsChat(choice.criterion)) {
    if (!options.chat) throw UsageError(title + " computed from the log-likelihood needs --chat");
    choice.chat = *options.chat;
    if (choice.chat < 1) {
      // Below 1 the data vary less than the model expects; the peers in R
      // take 1 then rather than reward the model for it.
      diagnostics.Note("--chat " + Shown(choice.chat) + " is below 1 and is taken as 1 (no overdispersion)");
      choice.chat = 1;
    }
  }
  return choice;
}

}  // namespace drav::selection
